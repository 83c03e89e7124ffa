// Hosts in trouble, for the checks of a plug-in: a stream of which a chosen call and all after it
// fail or throw, and a generator that answers nonsense, throws, or acts in the middle of a pass.
#pragma once

#include <functional>
#include <string_view>

#include "framework/InputStreams.h"
#include "host/PrintGenerator.h"

namespace orxprint {

enum class Trouble { None, Fails, Throws };

class TroubledStream final : public PrintInputStream {
public:
  // REQUIRES: firstCall >= 1. Calls count from 1, of whatever kind.
  TroubledStream(std::string_view document, Trouble itsTrouble, int firstCall)
      : stream(document), trouble(itsTrouble), first(firstCall) {}

  [[nodiscard]] int Calls() const { return calls; }

  int Open(const char* mode) override {
    return Answer([&] { return stream.Open(mode); });
  }
  int Read(void* buffer, int count, int* countRead) override {
    return Answer([&] { return stream.Read(buffer, count, countRead); });
  }
  int ReadByte(char* byte) override {
    return Answer([&] { return stream.ReadByte(byte); });
  }
  int SetPosition(unsigned position) override {
    return Answer([&] { return stream.SetPosition(position); });
  }
  int Seek(int offset, int origin) override {
    return Answer([&] { return stream.Seek(offset, origin); });
  }
  int UnreadByte(char byte) override {
    return Answer([&] { return stream.UnreadByte(byte); });
  }
  int GetPosition(unsigned* position) override {
    return Answer([&] { return stream.GetPosition(position); });
  }
  int IsReadable() override {
    return Answer([&] { return stream.IsReadable(); });
  }
  int Close() override {
    return Answer([&] { return stream.Close(); });
  }
  int HasMoreData() override {
    return Answer([&] { return stream.HasMoreData(); });
  }
  int GetState() override {
    return Answer([&] { return stream.GetState(); });
  }
  int ClearEndOfFile() override {
    return Answer([&] { return stream.ClearEndOfFile(); });
  }

private:
  template <typename Work>
  int Answer(Work work) {
    if (++calls < first || trouble == Trouble::None) return work();
    if (trouble == Trouble::Throws) throw calls;
    return -1;
  }

  orxframework::MemoryInputStream stream;
  Trouble trouble;
  int first;
  int calls = 0;
};

// Asks `onCall` what to answer to each call; another generator hears of the call first.
class ActingGenerator final : public PrintGenerator {
public:
  ActingGenerator(PrintGenerator& itsListener, std::function<int()> action)
      : listener(itsListener), onCall(std::move(action)) {}

  int NewPage() override { return After(listener.NewPage()); }
  int MoveTo(float x, float y) override { return After(listener.MoveTo(x, y)); }
  int LineTo(float x, float y) override { return After(listener.LineTo(x, y)); }
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    return After(listener.FillArea(contourCount, pointCounts, points));
  }
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override {
    return After(listener.DrawImage(x, y, flags, image));
  }
  int DefineColor(int index, float red, float green, float blue) override {
    return After(listener.DefineColor(index, red, green, blue));
  }
  int SetLineColor(int index) override { return After(listener.SetLineColor(index)); }
  int SetFillColor(int index) override { return After(listener.SetFillColor(index)); }
  int SetLineWidth(float width) override { return After(listener.SetLineWidth(width)); }
  int SetLineCap(int cap) override { return After(listener.SetLineCap(cap)); }
  int SetFillRule(int rule) override { return After(listener.SetFillRule(rule)); }

private:
  int After(int /*answer*/) { return onCall(); }

  PrintGenerator& listener;
  std::function<int()> onCall;
};

}  // namespace orxprint
