// An input stream with habits that hosts' streams have, and a note of how each use of it ended.
//
// It stands in front of a sound stream, which it borrows. With no habit chosen it changes nothing.
#pragma once

#include <algorithm>
#include <climits>
#include <string>

#include "host/PrintInputStream.h"

namespace orxtests {

// What a stream does that others do not.
struct Habit {
  const char* name = "Sound";
  unsigned failsFrom = UINT_MAX;  // reads fail at this position for ever; it stays "readable"
  int mostAtOnce = INT_MAX;       // Read gives no more bytes than this ...
  int shortRead = 0;              // ... and then answers this
  bool writesCount = true;        // Read says how many bytes it gave
  bool tellsPosition = true;
  int state = 0;
};

class OddStream final : public PrintInputStream {
public:
  // The stream behind is borrowed.
  OddStream(PrintInputStream& borrowed, const Habit& itsHabit)
      : stream(borrowed), habit(itsHabit) {}

  // A line for each Close: the position, and the calls since the last read that end a pass.
  std::string endings;

  int Open(const char* mode) override { return stream.Open(mode); }
  int Read(void* buffer, int count, int* countRead) override {
    calls.clear();
    const int room = static_cast<int>(std::min<unsigned>(INT_MAX, habit.failsFrom - Position()));
    const int given = std::min({count, room, habit.mostAtOnce});
    int taken = 0;
    const int status = stream.Read(buffer, given, &taken);
    if (habit.writesCount) *countRead = taken;
    if (room < count) return -1;
    return given < count ? habit.shortRead : status;
  }
  int ReadByte(char* byte) override {
    calls.clear();
    return Position() == habit.failsFrom ? -1 : stream.ReadByte(byte);
  }
  int SetPosition(unsigned position) override { return stream.SetPosition(position); }
  int Seek(int offset, int origin) override {
    calls += origin == 0 && offset == 0 ? " Rewind" : " Seek";
    return stream.Seek(offset, origin);
  }
  int UnreadByte(char byte) override { return stream.UnreadByte(byte); }
  int GetPosition(unsigned* position) override {
    return habit.tellsPosition ? stream.GetPosition(position) : -1;
  }
  int IsReadable() override { return stream.IsReadable(); }
  int Close() override {
    endings += std::to_string(Position()) + calls + " Close\n";
    return stream.Close();
  }
  int HasMoreData() override { return stream.HasMoreData(); }
  int GetState() override { return habit.state; }
  int ClearEndOfFile() override {
    calls = " ClearEndOfFile";
    return stream.ClearEndOfFile();
  }

private:
  [[nodiscard]] unsigned Position() {
    unsigned position = 0;
    static_cast<void>(stream.GetPosition(&position));
    return std::min(position, habit.failsFrom);
  }

  PrintInputStream& stream;
  const Habit habit;
  std::string calls;
};

}  // namespace orxtests
