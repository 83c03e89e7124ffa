#include "orxprint/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <thread>

extern "C" char** environ;  // NOLINT(readability-redundant-declaration): only GNU declares it

namespace orxprint {

namespace {

constexpr std::size_t kMostOutput = std::size_t{64} << 10;
constexpr std::chrono::milliseconds kPatience(10);

// Starts the program; 0 when it cannot be started.
pid_t Start(const std::string& program, const std::vector<std::string>& arguments, int output) {
  std::vector<char*> words = {const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) {
    words.push_back(const_cast<char*>(argument.c_str()));
  }
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  if (posix_spawn_file_actions_init(&actions) != 0) return 0;
  pid_t child = 0;
  const bool isStarted =
      posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0 &&
      posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO) == 0 &&
      posix_spawn(&child, program.c_str(), &actions, nullptr, words.data(), environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  return isStarted ? child : 0;
}

// Reads until the writers are gone or it is time.
std::string ReadUntil(const Deadline& end, int file) {
  std::string text;
  std::array<char, 4096> buffer;
  while (!IsOver(end)) {
    if (!WaitForInput(file, kPatience)) continue;
    const Transfer part = ReadSome(file, buffer.data(), buffer.size());
    if (part.count == 0 && part.error != EAGAIN) break;
    text.append(buffer.data(), std::min(part.count, kMostOutput - text.size()));
  }
  return text;
}

}  // namespace

ChildEnd RunChild(const std::string& program, const std::vector<std::string>& arguments,
                  const Deadline& end) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  for (const int each : ends) fcntl(each, F_SETFD, FD_CLOEXEC);
  const pid_t child = Start(program, arguments, writing.Number());
  if (child == 0) return {};
  writing.Close();

  ChildEnd result{ChildEnd::How::TimedOut, 0, ReadUntil(end, reading.Number())};
  int status = 0;
  pid_t ended = waitpid(child, &status, WNOHANG);
  for (; ended == 0 && !IsOver(end); ended = waitpid(child, &status, WNOHANG)) {
    std::this_thread::sleep_for(kPatience);
  }
  if (ended == 0) {
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
  } else if (WIFSIGNALED(status)) {
    result.how = ChildEnd::How::Killed;
    result.value = WTERMSIG(status);
  } else {
    result.how = ChildEnd::How::Exited;
    result.value = WEXITSTATUS(status);
  }
  return result;
}

std::string Describe(const ChildEnd& end) {
  switch (end.how) {
    case ChildEnd::How::Exited:
      return "exit status " + std::to_string(end.value);
    case ChildEnd::How::Killed:
      return "signal " + std::to_string(end.value) + " (" + strsignal(end.value) + ")";
    case ChildEnd::How::TimedOut:
      return "did not come back";
    case ChildEnd::How::NotStarted:
      return "could not be started";
  }
  return {};
}

}  // namespace orxprint
