// Waiting for the other end of a pipe.
#include "orxprint/Descriptor.h"

#include <gtest/gtest.h>

#if defined(_WIN32)
#  include <fcntl.h>
#  include <io.h>
#else
#  include <unistd.h>
#endif

#include <cerrno>
#include <string>

namespace orxprint {
namespace {

using std::chrono::milliseconds;

struct Pipe {
  Pipe() {
    int ends[2] = {-1, -1};
#if defined(_WIN32)
    EXPECT_EQ(_pipe(ends, 4096, _O_BINARY), 0);
#else
    EXPECT_EQ(pipe(ends), 0);
#endif
    reader = Descriptor(ends[0]);
    writer = Descriptor(ends[1]);
  }

  Descriptor reader;
  Descriptor writer;
};

TEST(Pipes, AreReadWhenThereIsSomethingOrNobodyWrites) {
  Pipe pipe;
  EXPECT_FALSE(WaitForInput(pipe.reader.Number(), milliseconds(20)));
  EXPECT_EQ(WriteAll(pipe.writer.Number(), "\r\n\x1A", {}), 0);
  EXPECT_TRUE(WaitForInput(pipe.reader.Number(), milliseconds(0)));
  char buffer[10];
  Transfer transfer = ReadSome(pipe.reader.Number(), buffer, sizeof buffer);
  EXPECT_EQ(std::string(buffer, transfer.count), "\r\n\x1A");
  EXPECT_EQ(pipe.writer.Close(), 0);
  EXPECT_TRUE(WaitForInput(pipe.reader.Number(), milliseconds(0)));
  transfer = ReadSome(pipe.reader.Number(), buffer, sizeof buffer);
  EXPECT_EQ(transfer.count, 0U);
  EXPECT_EQ(transfer.error, 0);
}

TEST(Pipes, AreWrittenToUntilTheDeadline) {
  Pipe pipe;
  const std::string much(1'000'000, 'x');
  EXPECT_EQ(WriteAll(pipe.writer.Number(), much, Clock::now() + milliseconds(50)), ETIMEDOUT);
}

}  // namespace
}  // namespace orxprint
