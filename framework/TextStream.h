// Texts as an interpreter's input, one after the other.
//
// For hosts that ask an interpreter about parts of a document: it is built over the stream once,
// and each text is shown before the question about it. The stream borrows the text.
#pragma once

#include <optional>
#include <string_view>

#include "framework/InputStreams.h"

namespace orxframework {

class TextStream final : public PrintInputStream {
public:
  // The text is borrowed until the next takes its place.
  void Show(std::string_view text) { stream.emplace(text); }

  int Open(const char* mode) override { return stream->Open(mode); }
  int Read(void* buffer, int count, int* countRead) override {
    return stream->Read(buffer, count, countRead);
  }
  int ReadByte(char* byte) override { return stream->ReadByte(byte); }
  int SetPosition(unsigned position) override { return stream->SetPosition(position); }
  int Seek(int offset, int origin) override { return stream->Seek(offset, origin); }
  int UnreadByte(char byte) override { return stream->UnreadByte(byte); }
  int GetPosition(unsigned* position) override { return stream->GetPosition(position); }
  int IsReadable() override { return stream->IsReadable(); }
  int Close() override { return stream->Close(); }
  int HasMoreData() override { return stream->HasMoreData(); }
  int GetState() override { return stream->GetState(); }
  int ClearEndOfFile() override { return stream->ClearEndOfFile(); }

private:
  std::optional<MemoryInputStream> stream{std::in_place, std::string_view()};
};

}  // namespace orxframework
