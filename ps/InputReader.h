// The one reader of the document: scanner, binary tokens, decode filters, "eexec" and queries all
// take their bytes from here, inline.
//
// The reader borrows the framework's stream and reads ahead of what it was asked for, in blocks.
// Nobody notices: every answer is what reading the stream byte by byte would have given. A block
// counts only when the stream read all of it from a position that it could name; after any other
// answer the reader goes back there and tries less, down to single bytes. What a stream answers at
// the end of its data sticks, so going back clears that first. When a pass ends, the stream stands
// behind the last byte that was taken.
//
// What the stream throws comes out as HostThrew. A stream may be null: then there is nothing to
// read, and every answer is that of a stream at its end.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "host/PrintInputStream.h"
#include "ps/RunWatch.h"

namespace orxeps {

class InputReader {
public:
  InputReader(PrintInputStream* borrowedStream, RunWatch& runWatch) noexcept;
  InputReader(const InputReader&) = delete;
  InputReader& operator=(const InputReader&) = delete;

  [[nodiscard]] bool HasStream() const noexcept;

  // Opens the stream and rewinds it. What Close leaves is as if there had been no reading ahead.
  void Open();
  void Rewind();
  // Steps back over what was read ahead and clears the end condition.
  void ClearEndOfFile();
  void Close();

  // Takes a byte; false, and `byte` as it was, when there is none.
  [[nodiscard]] bool ReadByte(char& byte) {
    if (next == end) return ReadSlowly(byte);
    byte = *next++;
    return true;
  }
  // Takes exactly `count` bytes; false when there are fewer, and then those are gone.
  [[nodiscard]] bool ReadBytes(unsigned char* bytes, std::size_t count);
  // Gives a byte back: the one just taken steps back, any other (a 0 after a failed read) waits in
  // front of the data.
  void UnreadByte(char byte) noexcept {
    if (next != begin && canStepBack && next[-1] == byte) {
      --next;
    } else {
      pushedBack = byte;
      hasPushedBack = true;
    }
  }
  // The bytes that lie ready to be taken, up to the block's end; Skip takes the first of them. None
  // may lie ready although there are more: ReadByte fetches them.
  [[nodiscard]] std::string_view Ready() const noexcept {
    return {next, static_cast<std::size_t>(end - next)};
  }
  // The same and the byte taken last in front of them; empty when that came from elsewhere.
  [[nodiscard]] std::string_view ReadyWithLast() const noexcept {
    if (!canStepBack || next == begin) return {};
    return {next - 1, static_cast<std::size_t>(end - next) + 1};
  }
  void Skip(std::size_t count) noexcept { next += count; }

  // Whether a byte waits to be taken.
  [[nodiscard]] bool IsReadable() { return next != end || IsReadableSlowly(); }
  // False from the first read that failed at the end of the data.
  [[nodiscard]] bool HasMoreData() { return HasBlockAhead() || StreamHasMoreData(); }
  // The stream's state, 0 in the normal one.
  [[nodiscard]] int GetState() { return HasBlockAhead() ? stateAhead : StreamState(); }
  // Goes to the end of the data.
  void SeekToEnd();

  // Bytes taken since the reader was made. A loop that reads ends when this stands still: a stream
  // may fail for ever.
  [[nodiscard]] std::uint64_t BytesTaken() const noexcept {
    return takenBefore + static_cast<std::uint64_t>(next - begin);
  }
  // The place of the next byte in the document, counted from its start.
  [[nodiscard]] std::uint64_t Position() const noexcept {
    return BytesTaken() - takenAtOpen - foreignTaken;
  }

  // Where the token that was taken last begins, in the document. It is worked out only when it is
  // asked for, from the bytes that lie before the next one, so that reading tokens pays nothing;
  // what takes bytes in another way tells where it began, with NoteTokenStart or a PlaceHold.
  [[nodiscard]] std::uint64_t TokenStart() const noexcept;
  // The token that ends here began there.
  void NoteTokenStart(std::uint64_t start) const noexcept { noted = {start, Position()}; }

  // The largest block; for tests, which try small ones. 1 turns reading ahead off.
  void SetLargestBlock(std::size_t bytes) noexcept { largestBlock = bytes; }

private:
  friend class PlaceHold;

  static constexpr std::size_t kBlockBytes = std::size_t{64} << 10;
  static constexpr std::uint64_t kNotHeld = ~std::uint64_t{0};

  struct TokenPlace {
    std::uint64_t start = 0;
    std::uint64_t behind = 0;
  };

  static constexpr std::size_t kFirstBlockBytes = std::size_t{4} << 10;

  // Whether bytes lie ready that the stream has given in a block.
  [[nodiscard]] bool HasBlockAhead() const noexcept { return next != end && blockHasPosition; }
  [[nodiscard]] std::size_t LengthOfLastToken() const noexcept;
  [[nodiscard]] bool ReadSlowly(char& byte);
  [[nodiscard]] bool IsReadableSlowly();
  [[nodiscard]] bool StreamHasMoreData();
  [[nodiscard]] int StreamState();
  bool FetchBlock();
  bool FetchByte();
  std::size_t ReadBlockAt(unsigned position, std::size_t size);
  void UseBlock(std::size_t size) noexcept;
  void DropBlock() noexcept;
  void GiveBack();

  PrintInputStream* const stream;
  RunWatch& watch;

  const char* begin = nullptr;  // the block: taken up to `next`, ready up to `end`
  const char* next = nullptr;
  const char* end = nullptr;
  bool canStepBack = false;  // the byte before `next` is the one read last
  bool hasPushedBack = false;
  char pushedBack = 0;
  bool blockHasPosition = false;
  unsigned blockPosition = 0;
  int stateAhead = 0;  // what the stream answered when the block began

  std::size_t nextBlock = 0;   // what is tried next
  std::size_t mostAtOnce = 0;  // larger blocks have failed in this pass
  std::size_t largestBlock = kBlockBytes;
  std::uint64_t takenBefore = 0;  // before the block
  std::uint64_t takenAtOpen = 0;
  std::uint64_t foreignTaken = 0;  // since then, of bytes that are none of the document's
  std::unique_ptr<char[]> memory;
  char single = 0;  // the block in which bytes come one at a time

  mutable TokenPlace noted;         // the last token whose place was told or worked out
  std::uint64_t heldAt = kNotHeld;  // what runs began here, however far the input is read meanwhile
};

// While it lives, the token that runs is known to have begun at one place, although more of the
// input is taken.
class PlaceHold {
public:
  // From the token that was taken last.
  explicit PlaceHold(InputReader& input) noexcept : PlaceHold(input, input.TokenStart()) {}
  PlaceHold(InputReader& input, std::uint64_t start) noexcept
      : reader(input), before(input.heldAt) {
    reader.heldAt = start;
  }
  PlaceHold(const PlaceHold&) = delete;
  PlaceHold& operator=(const PlaceHold&) = delete;
  ~PlaceHold() {
    reader.NoteTokenStart(reader.heldAt);
    reader.heldAt = before;
  }

private:
  InputReader& reader;
  const std::uint64_t before;
};

// Ends a loop that reads when a turn has taken no byte.
class ProgressGuard {
public:
  explicit ProgressGuard(const InputReader& input) noexcept : reader(input) {}
  // True at first, and while bytes were taken since the last question.
  [[nodiscard]] bool Moved() noexcept {
    const std::uint64_t now = reader.BytesTaken();
    const bool moved = !asked || now != before;
    asked = true;
    before = now;
    return moved;
  }

private:
  const InputReader& reader;
  std::uint64_t before = 0;
  bool asked = false;
};

}  // namespace orxeps
