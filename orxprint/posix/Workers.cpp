#include "orxprint/Workers.h"

#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#if defined(__linux__)
#  include <sys/prctl.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

#include "orxprint/Descriptor.h"
#include "orxprint/Failure.h"
#include "orxprint/RunControl.h"

namespace orxprint {

namespace {

constexpr std::chrono::milliseconds kPatience(100);

// A chain from one of its items on.
struct Task {
  std::size_t chain = 0;
  std::size_t begin = 0;
};

// What stands before an answer's bytes.
struct AnswerHead {
  std::size_t item = 0;
  std::size_t size = 0;
  bool isLast = false;  // the worker ends behind it
};

struct Worker {
  pid_t process = 0;  // 0: none
  Descriptor line;    // to it and from it
  std::string received;
  std::optional<Task> task;  // begins with the item whose answer comes next
  bool isLeaving = false;    // takes no more tasks
  [[nodiscard]] bool IsThere() const { return process != 0; }
};

bool ReadWhole(int file, void* place, std::size_t size) {
  auto* const bytes = static_cast<char*>(place);
  for (std::size_t done = 0; done < size;) {
    const ssize_t count = read(file, bytes + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

// Returns whether the worker is as good as new.
bool AnswerItem(int line, const SharedWork& shared, std::size_t item) {
  const std::string answer = shared.work(item);
  const AnswerHead head{item, answer.size(), AnyRunWasLeft()};
  std::string message(reinterpret_cast<const char*>(&head), sizeof head);
  message += answer;
  return WriteAll(line, message, {}) == 0 && !head.isLast;
}

void WorkAtTasks(int line, const SharedWork& shared) {
  Task task;
  while (ReadWhole(line, &task, sizeof task)) {
    const Chain& chain = shared.chains[task.chain];
    for (std::size_t i = task.begin; i < chain.size(); ++i) {
      if (!AnswerItem(line, shared, chain[i])) return;
    }
  }
}

// Nothing may come back from here into what is the first process's.
[[noreturn]] void BeWorker(int line, const SharedWork& shared) {
  try {
    WorkAtTasks(line, shared);
  } catch (...) {
    std::_Exit(EXIT_FAILURE);
  }
  std::fflush(nullptr);
  std::_Exit(EXIT_SUCCESS);
}

void EndWithParent(pid_t parent) {
#if defined(__linux__)
  prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
  if (getppid() != parent) std::_Exit(EXIT_FAILURE);
}

class Office {
public:
  explicit Office(const SharedWork& sharedWork) : shared(sharedWork), workers(WorkerCount()) {
    for (std::size_t i = shared.chains.size(); i > 0; --i) tasks.push_back({i - 1, 0});
  }
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;
  ~Office() {
    for (Worker& worker : workers) {
      if (worker.IsThere()) kill(worker.process, SIGTERM);
    }
    for (Worker& worker : workers) Bury(worker);
  }

  void Work() {
    Assign();
    while (goesOn && (!tasks.empty() || std::ranges::any_of(workers, HasTask))) {
      Listen();
      shared.onWait();
      if (goesOn) Assign();
    }
    for (Worker& worker : workers) worker.line.Close();
  }

private:
  static bool HasTask(const Worker& worker) { return worker.task.has_value(); }
  [[nodiscard]] std::size_t WorkerCount() const {
    return std::clamp<std::size_t>(shared.workers, 1,
                                   std::max<std::size_t>(shared.chains.size(), 1));
  }

  // Gives every idle worker the next task.
  void Assign() {
    for (Worker& worker : workers) {
      if (tasks.empty()) return;
      if (worker.task || worker.isLeaving) continue;
      if (!worker.IsThere() && !Start(worker)) continue;
      const Task task = tasks.back();
      tasks.pop_back();
      worker.task = task;
      int flags = 0;
#if defined(MSG_NOSIGNAL)
      flags = MSG_NOSIGNAL;
#endif
      // One that is gone is noticed at the end of its line.
      [[maybe_unused]] const ssize_t sent = send(worker.line.Number(), &task, sizeof task, flags);
    }
    const bool isAnyThere = std::ranges::any_of(workers, &Worker::IsThere);
    if (!isAnyThere && !tasks.empty()) {
      throw Failure("no process can be started: " + ErrorText(startError));
    }
  }

  bool Start(Worker& worker) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) {
      startError = errno;
      return false;
    }
    Descriptor here(ends[0]);
    Descriptor there(ends[1]);
    std::fflush(nullptr);
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
      EndWithParent(parent);
      here.Close();
      // A line ends when nobody holds its other end.
      for (Worker& other : workers) other.line.Close();
      BeWorker(there.Number(), shared);
    }
    if (process < 0) {
      startError = errno;
      return false;
    }
    worker = Worker{};
    worker.process = process;
    worker.line = std::move(here);
    return true;
  }

  // Takes what the workers say, waiting for it no longer than patience allows.
  void Listen() {
    std::vector<pollfd> lines;
    std::vector<Worker*> speakers;
    for (Worker& worker : workers) {
      if (!worker.IsThere()) continue;
      lines.push_back({worker.line.Number(), POLLIN, 0});
      speakers.push_back(&worker);
    }
    if (poll(lines.data(), lines.size(), static_cast<int>(kPatience.count())) <= 0) return;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (lines[i].revents != 0) Hear(*speakers[i]);
    }
    HandOver();
  }

  void Hear(Worker& worker) {
    std::array<char, 1 << 16> buffer;
    const ssize_t count = read(worker.line.Number(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) return;
    if (count <= 0) return TakeEnd(worker);
    worker.received.append(buffer.data(), static_cast<std::size_t>(count));
    std::size_t place = 0;
    for (AnswerHead head; worker.received.size() - place >= sizeof head;) {
      std::memcpy(&head, worker.received.data() + place, sizeof head);
      if (worker.received.size() - place - sizeof head < head.size) break;
      answers[head.item] = {worker.received.substr(place + sizeof head, head.size), {}};
      place += sizeof head + head.size;
      worker.isLeaving = head.isLast;
      Advance(worker);
    }
    worker.received.erase(0, place);
    if (worker.isLeaving) GiveBack(worker);
  }

  void Advance(Worker& worker) {
    if (worker.task && ++worker.task->begin == shared.chains[worker.task->chain].size()) {
      worker.task.reset();
    }
  }

  // The rest of its task is for another one.
  void GiveBack(Worker& worker) {
    if (worker.task) tasks.push_back(*worker.task);
    worker.task.reset();
  }

  // An item that was at work then has no answer.
  void TakeEnd(Worker& worker) {
    const ChildEnd end = Bury(worker);
    if (worker.task) {
      answers[shared.chains[worker.task->chain][worker.task->begin]] = {std::nullopt, end};
      Advance(worker);
    }
    GiveBack(worker);
  }

  // Waits for a worker that has been told to end, or is about to.
  static ChildEnd Bury(Worker& worker) {
    if (!worker.IsThere()) return {};
    worker.line.Close();
    int status = 0;
    while (waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
    }
    worker.process = 0;
    worker.isLeaving = false;
    worker.received.clear();
    if (WIFSIGNALED(status)) return {ChildEnd::How::Killed, WTERMSIG(status), {}};
    return {ChildEnd::How::Exited, WEXITSTATUS(status), {}};
  }

  void HandOver() {
    for (auto next = answers.find(nextItem); goesOn && next != answers.end();
         next = answers.find(++nextItem)) {
      goesOn = shared.take(nextItem, next->second.text, next->second.end);
      answers.erase(next);
    }
  }

  struct Answer {
    std::optional<std::string> text;
    ChildEnd end;
  };

  const SharedWork& shared;
  std::vector<Worker> workers;
  std::vector<Task> tasks;                // the next one at the end
  std::map<std::size_t, Answer> answers;  // that wait for those before them
  std::size_t nextItem = 0;
  bool goesOn = true;
  int startError = 0;
};

}  // namespace

bool MayShareOut() noexcept { return true; }

void ShareOut(const SharedWork& shared) { Office(shared).Work(); }

}  // namespace orxprint
