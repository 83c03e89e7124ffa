// A small language for using an input stream, so that tests of streams can be tables.
//
// A script and what it answers stand side by side in a row. Streams over files and over memory run
// the same scripts and must answer the same.
#pragma once

#include <cstddef>
#include <sstream>
#include <string>

#include "host/PrintInputStream.h"

namespace orxframework {

// Runs a script of steps separated by spaces and gives what each answers:
//   r    ReadByte: the byte, or "-" with the byte left alone
//   RN   Read of N bytes: status, bytes
//   uC   UnreadByte of C; "u0" is a zero byte     p    GetPosition
//   sN   Seek(N, 0)      eN   Seek(N, 2)          jN   SetPosition(N)
//   ?    IsReadable      m    HasMoreData         c    ClearEndOfFile
//   o    Open            x    Close
// Steps that only answer a status answer nothing when they succeed and "!" when they fail.
class StreamScript {
public:
  explicit StreamScript(PrintInputStream& scriptedStream) : stream(scriptedStream) {}

  std::string Run(const std::string& script) {
    std::istringstream steps(script);
    std::string answers;
    for (std::string step; steps >> step;) {
      const std::string answer = RunStep(step[0], step.substr(1));
      if (!answer.empty()) answers += (answers.empty() ? "" : " ") + answer;
    }
    return answers;
  }

private:
  static std::string Status(int status) { return status >= 0 ? "" : "!"; }

  std::string RunStep(char step, const std::string& argument) {
    switch (step) {
      case 'r':
        return ReadByte();
      case 'R':
        return Read(std::stoi(argument));
      case 'u':
        return Status(stream.UnreadByte(argument == "0" ? '\0' : argument[0]));
      case 'p':
        return Position();
      case 's':
        return Status(stream.Seek(std::stoi(argument), 0));
      case 'e':
        return Status(stream.Seek(std::stoi(argument), 2));
      case 'j':
        return Status(stream.SetPosition(static_cast<unsigned>(std::stoul(argument))));
      case '?':
        return stream.IsReadable() == 1 ? "1" : "0";
      case 'm':
        return stream.HasMoreData() != 0 ? "1" : "0";
      case 'c':
        return Status(stream.ClearEndOfFile());
      case 'o':
        return Status(stream.Open("rb"));
      default:
        return Status(stream.Close());
    }
  }

  std::string ReadByte() {
    char byte = '#';
    if (stream.ReadByte(&byte) < 0) return byte == '#' ? "-" : "changed";
    return byte == '\0' ? "\\0" : std::string(1, byte);
  }

  std::string Read(int count) {
    std::string buffer(64, '#');
    int countRead = -1;
    const int status = stream.Read(buffer.data(), count, &countRead);
    return (status >= 0 ? "ok:" : "!:") + buffer.substr(0, static_cast<std::size_t>(countRead));
  }

  std::string Position() {
    unsigned position = 0;
    return stream.GetPosition(&position) < 0 ? "!" : std::to_string(position);
  }

  PrintInputStream& stream;
};

}  // namespace orxframework
