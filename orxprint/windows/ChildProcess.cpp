#include "orxprint/ChildProcess.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

#include "orxprint/windows/Text.h"

namespace orxprint {

namespace {

constexpr std::size_t kMostOutput = std::size_t{64} << 10;
constexpr std::chrono::milliseconds kPatience(10);
// What a process that an exception ended answers: the exception's code, an error of the system's.
constexpr DWORD kFirstException = 0xC0000000;
constexpr UINT kKilled = 1;

class Handle {
public:
  Handle() = default;
  explicit Handle(HANDLE owned) : handle(owned) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Close(); }

  [[nodiscard]] HANDLE Get() const { return handle; }
  void Close() {
    if (handle) CloseHandle(std::exchange(handle, nullptr));
  }

private:
  HANDLE handle = nullptr;
};

// As the system's own reader of command lines takes it apart again.
std::wstring Quoted(const std::string& argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : WideText(argument)) {
    if (character == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    quoted += character;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

// Starts the program with what it writes going to `output`; null when it cannot be started.
HANDLE Start(const std::string& program, const std::vector<std::string>& arguments, HANDLE output) {
  std::wstring line = Quoted(program);
  for (const std::string& argument : arguments) line += L' ' + Quoted(argument);
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const Handle nothing(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   &inherited, OPEN_EXISTING, 0, nullptr));
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = nothing.Get();
  startup.hStdOutput = output;
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(WideText(program).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                      nullptr, &startup, &started)) {
    return nullptr;
  }
  CloseHandle(started.hThread);
  return started.hProcess;
}

// Reads until the writers are gone or it is time.
std::string ReadUntil(const Deadline& end, HANDLE pipe) {
  std::string text;
  std::array<char, 4096> buffer;
  DWORD ready = 0;
  while (!IsOver(end) && PeekNamedPipe(pipe, nullptr, 0, nullptr, &ready, nullptr)) {
    DWORD count = 0;
    if (ready == 0) {
      std::this_thread::sleep_for(kPatience);
    } else if (ReadFile(pipe, buffer.data(), buffer.size(), &count, nullptr)) {
      text.append(buffer.data(), std::min<std::size_t>(count, kMostOutput - text.size()));
    }
  }
  return text;
}

}  // namespace

ChildEnd RunChild(const std::string& program, const std::vector<std::string>& arguments,
                  const Deadline& end) {
  HANDLE ends[2] = {};
  if (!CreatePipe(&ends[0], &ends[1], nullptr, 0)) return {};
  const Handle reading(ends[0]);
  Handle writing(ends[1]);
  SetHandleInformation(writing.Get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  const Handle child(Start(program, arguments, writing.Get()));
  writing.Close();
  if (!child.Get()) return {};

  ChildEnd result{ChildEnd::How::TimedOut, 0, ReadUntil(end, reading.Get())};
  DWORD waited = WAIT_TIMEOUT;
  do {
    waited = WaitForSingleObject(child.Get(), static_cast<DWORD>(kPatience.count()));
  } while (waited == WAIT_TIMEOUT && !IsOver(end));
  if (waited != WAIT_OBJECT_0) {
    TerminateProcess(child.Get(), kKilled);
    WaitForSingleObject(child.Get(), INFINITE);
    return result;
  }
  DWORD status = 0;
  GetExitCodeProcess(child.Get(), &status);
  result.how = status >= kFirstException ? ChildEnd::How::Killed : ChildEnd::How::Exited;
  result.value = static_cast<int>(status);
  return result;
}

std::string Describe(const ChildEnd& end) {
  switch (end.how) {
    case ChildEnd::How::Exited:
      return "exit status " + std::to_string(end.value);
    case ChildEnd::How::Killed:
      return "exception " + std::to_string(static_cast<std::uint32_t>(end.value));
    case ChildEnd::How::TimedOut:
      return "did not come back";
    case ChildEnd::How::NotStarted:
      return "could not be started";
  }
  return {};
}

}  // namespace orxprint
