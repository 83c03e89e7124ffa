// Pieces of work for all cores.
//
// The caller describes the pieces and waits; the threads are gone when it gets its answer, so
// what the pieces borrow has to last for the call only.
#pragma once

#include <chrono>
#include <functional>

namespace orxdrawing {

// As many threads as there are cores, 1 at least.
[[nodiscard]] unsigned CoreCount();

struct ParallelWork {
  int pieces = 0;
  // Does one piece. Pieces are begun in their order; `worker` is below the number of workers and
  // tells the threads apart.
  std::function<void(unsigned worker, int piece)> work;
  // Called about fifty times a second by the caller's thread while others are still at work.
  std::function<void()> whileWaiting;
};

// Returns when all pieces are done; the caller's thread is one of the workers, and the only one
// where no other can be had. Throws what a piece threw first; no other is begun then.
void DoInParallel(unsigned workers, const ParallelWork& work);

}  // namespace orxdrawing
