#include "drawing/ParallelWork.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace orxdrawing {

namespace {

constexpr std::chrono::milliseconds kPatience{20};

class Crew {
public:
  Crew(unsigned workers, const ParallelWork& workToDo) : work(workToDo) {
    threads.reserve(workers);
    try {
      for (unsigned worker = 1; worker < workers; ++worker) {
        ++busy;
        threads.emplace_back([this, worker] { WorkAs(worker); });
      }
    } catch (const std::exception&) {
      --busy;  // fewer have to do
    }
  }
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;
  ~Crew() {
    for (std::thread& thread : threads) thread.join();
  }

  void WorkAlong() {
    TakePieces(0);
    std::unique_lock lock(door);
    while (!atRest.wait_for(lock, kPatience, [this] { return busy == 0; })) {
      lock.unlock();
      if (work.whileWaiting) work.whileWaiting();
      lock.lock();
    }
    if (failure) std::rethrow_exception(failure);
  }

private:
  void WorkAs(unsigned worker) {
    TakePieces(worker);
    const std::lock_guard lock(door);
    --busy;
    atRest.notify_one();
  }
  void TakePieces(unsigned worker) {
    try {
      for (int piece = next++; piece < work.pieces; piece = next++) work.work(worker, piece);
    } catch (...) {
      next = work.pieces;
      const std::lock_guard lock(door);
      if (!failure) failure = std::current_exception();
    }
  }

  const ParallelWork& work;
  std::atomic<int> next = 0;
  std::mutex door;
  std::condition_variable atRest;
  std::atomic<int> busy = 0;  // threads beside the caller's
  std::exception_ptr failure;
  std::vector<std::thread> threads;
};

}  // namespace

unsigned CoreCount() { return std::max(1U, std::thread::hardware_concurrency()); }

void DoInParallel(unsigned workers, const ParallelWork& work) {
  const auto wanted = static_cast<unsigned>(std::max(work.pieces, 1));
  Crew(std::min(workers, wanted), work).WorkAlong();
}

}  // namespace orxdrawing
