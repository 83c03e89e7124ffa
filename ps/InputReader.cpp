#include "ps/InputReader.h"

#include <algorithm>
#include <limits>
#include <new>

#include "ps/CharacterClass.h"
#include "ps/HostCalls.h"

namespace orxeps {

namespace {

// Stands in for the stream where there is none.
class NoStream final : public PrintInputStream {
  int Open(const char* /*mode*/) override { return -1; }
  int Read(void* /*buffer*/, int /*count*/, int* /*countRead*/) override { return -1; }
  int ReadByte(char* /*byte*/) override { return -1; }
  int SetPosition(unsigned /*position*/) override { return -1; }
  int Seek(int /*offset*/, int /*origin*/) override { return -1; }
  int UnreadByte(char /*byte*/) override { return -1; }
  int GetPosition(unsigned* /*position*/) override { return -1; }
  int IsReadable() override { return 0; }
  int Close() override { return -1; }
  int HasMoreData() override { return 0; }
  int GetState() override { return -1; }
  int ClearEndOfFile() override { return -1; }
};
constinit NoStream noStream;

}  // namespace

InputReader::InputReader(PrintInputStream* borrowedStream, RunWatch& runWatch) noexcept
    : stream(borrowedStream ? borrowedStream : &noStream), watch(runWatch) {}

bool InputReader::HasStream() const noexcept { return stream != &noStream; }

void InputReader::Open() {
  DropBlock();
  hasPushedBack = false;
  nextBlock = std::min(kFirstBlockBytes, largestBlock);
  mostAtOnce = largestBlock;
  CallHost([this] { return stream->Open("rb"); });
}

void InputReader::Rewind() {
  DropBlock();
  hasPushedBack = false;
  CallHost([this] { return stream->Seek(0, 0); });
  takenAtOpen = BytesTaken();
  foreignTaken = 0;
  noted = {};
  heldAt = kNotHeld;
}

void InputReader::ClearEndOfFile() {
  CallHost([this] {
    GiveBack();
    return stream->ClearEndOfFile();
  });
}

void InputReader::Close() {
  CallHost([this] {
    GiveBack();
    return stream->Close();
  });
}

void InputReader::SeekToEnd() {
  DropBlock();
  hasPushedBack = false;
  CallHost([this] { return stream->Seek(0, 2); });
}

// A word, a name with its "/", or brackets: the bytes of the block before the next one, back to
// where the token before them ended.
std::size_t InputReader::LengthOfLastToken() const noexcept {
  const std::uint64_t sinceNoted = Position() - std::min(noted.behind, Position());
  const auto most = std::min(static_cast<std::uint64_t>(next - begin), sinceNoted);
  const char* const limit = next - most;
  const char* first = next;
  while (first != limit && Is(first[-1], kRegular)) --first;
  if (first != next) {
    if (first != limit && first[-1] == '/') --first;
  } else if (first != limit && Is(first[-1], kDelimiter)) {
    const char bracket = *--first;
    const bool mayBeDouble = bracket == '<' || bracket == '>';
    if (mayBeDouble && first != limit && first[-1] == bracket) --first;
  }
  return static_cast<std::size_t>(next - first);
}

std::uint64_t InputReader::TokenStart() const noexcept {
  if (heldAt != kNotHeld) return heldAt;
  if (noted.behind != Position()) NoteTokenStart(Position() - LengthOfLastToken());
  return noted.start;
}

bool InputReader::ReadBytes(unsigned char* bytes, std::size_t count) {
  for (std::size_t done = 0; done < count;) {
    if (next == end) {
      char byte = 0;
      if (!ReadSlowly(byte)) return false;
      bytes[done++] = static_cast<unsigned char>(byte);
      continue;
    }
    const std::size_t ready = std::min(count - done, Ready().size());
    std::copy_n(next, ready, bytes + done);
    done += ready;
    next += ready;
  }
  return true;
}

// REQUIRES, here and below: the block is used up.
bool InputReader::ReadSlowly(char& byte) {
  if (hasPushedBack) {
    hasPushedBack = false;
    canStepBack = false;
    ++takenBefore;
    ++foreignTaken;
    byte = pushedBack;
    return true;
  }
  if (!watch.MayGoOn() || !CallHost([this] { return FetchBlock() || FetchByte(); })) {
    canStepBack = false;
    return false;
  }
  byte = *next++;
  return true;
}

bool InputReader::IsReadableSlowly() {
  if (hasPushedBack) return true;
  return !watch.IsStopped() && CallHost([this] { return stream->IsReadable(); }) == 1;
}

bool InputReader::StreamHasMoreData() {
  return !watch.IsStopped() && CallHost([this] { return stream->HasMoreData(); }) != 0;
}

int InputReader::StreamState() {
  return CallHost([this] { return stream->GetState(); });
}

bool InputReader::FetchBlock() {
  DropBlock();
  if (nextBlock <= 1 || stream->IsReadable() != 1 || stream->HasMoreData() == 0) return false;
  unsigned position = 0;
  if (stream->GetPosition(&position) < 0) {
    nextBlock = 1;  // there is no way back on this stream
    return false;
  }
  if (!memory) memory.reset(new (std::nothrow) char[kBlockBytes]);
  if (!memory || position > std::numeric_limits<unsigned>::max() - kBlockBytes) return false;
  const int state = stream->GetState();
  const std::size_t size = ReadBlockAt(position, nextBlock);
  if (size == 0) return false;
  stateAhead = state;
  blockHasPosition = true;
  blockPosition = position;
  begin = memory.get();
  UseBlock(size);
  nextBlock = std::min({size * 4, mostAtOnce, largestBlock});
  return true;
}

// Reads a block of `size` bytes or as many fewer as the stream gives at once. Returns how many, or
// 0 and the stream where it was.
std::size_t InputReader::ReadBlockAt(unsigned position, std::size_t size) {
  while (size > 1) {
    int count = -1;
    const int status = stream->Read(memory.get(), static_cast<int>(size), &count);
    const auto countRead = count > 0 ? static_cast<std::size_t>(count) : 0;
    if (status >= 0 && countRead == size) return size;
    // A stream that succeeds and leaves the count alone has to stand where it should.
    unsigned now = 0;
    if (status >= 0 && count == -1 && stream->GetPosition(&now) >= 0 && now - position == size) {
      return size;
    }
    stream->ClearEndOfFile();
    stream->SetPosition(position);
    mostAtOnce = std::max<std::size_t>(size - 1, 1);
    size = status < 0 && countRead > 1 && countRead < size ? countRead : size / 8;
  }
  nextBlock = std::max<std::size_t>(mostAtOnce / 8, 1);
  return 0;
}

bool InputReader::FetchByte() {
  DropBlock();
  if (stream->ReadByte(&single) < 0) {
    if (stream->IsReadable() == 1) watch.NoteEnd(ORXPassResult::ReadFailed, "", Position());
    return false;
  }
  blockHasPosition = false;
  begin = &single;
  UseBlock(1);
  return true;
}

void InputReader::UseBlock(std::size_t size) noexcept {
  next = begin;
  end = begin + size;
  canStepBack = true;
}

void InputReader::DropBlock() noexcept {
  takenBefore = BytesTaken();
  begin = next = end = nullptr;
  canStepBack = false;
}

// Makes the stream stand where it would without reading ahead.
void InputReader::GiveBack() {
  const auto taken = static_cast<int>(next - begin);
  const bool isAhead = next != end;
  if (isAhead && !blockHasPosition) {
    stream->UnreadByte(*next);
  } else if (isAhead) {
    stream->ClearEndOfFile();
    stream->SetPosition(blockPosition);
    int count = 0;
    if (taken > 0) stream->Read(memory.get(), taken, &count);
  }
  if (hasPushedBack) stream->UnreadByte(pushedBack);
  DropBlock();
  hasPushedBack = false;
}

}  // namespace orxeps
