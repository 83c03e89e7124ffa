// The input and the generator of a run under control: every call passes the control first, so that
// a run can be stopped, and nothing thrown by the host's own code reaches the library.
#pragma once

#include "framework/InputStreams.h"
#include "host/PrintGenerator.h"
#include "orxprint/RunControl.h"

namespace orxprint {

// An input that seems to end when the run is asked to stop. Borrows both.
class GuardedInputStream final : public PrintInputStream {
public:
  GuardedInputStream(RunControl& runControl, orxframework::WindowedInputStream& stream) noexcept
      : control(runControl), inner(stream) {}

  int Open(const char* mode) override { return inner.Open(mode); }
  int Read(void* buffer, int count, int* countRead) override {
    if (control.MayRead()) return inner.Read(buffer, count, countRead);
    if (countRead) *countRead = 0;
    return -1;
  }
  int ReadByte(char* byte) override { return control.MayRead() ? inner.ReadByte(byte) : -1; }
  int SetPosition(unsigned position) override { return inner.SetPosition(position); }
  int Seek(int offset, int origin) override { return inner.Seek(offset, origin); }
  int UnreadByte(char byte) override { return inner.UnreadByte(byte); }
  int GetPosition(unsigned* position) override { return inner.GetPosition(position); }
  int IsReadable() override { return control.MayRead() ? inner.IsReadable() : 0; }
  int Close() override { return inner.Close(); }
  int HasMoreData() override { return control.MayRead() ? inner.HasMoreData() : 0; }
  int GetState() override { return inner.GetState(); }
  int ClearEndOfFile() override { return inner.ClearEndOfFile(); }

private:
  RunControl& control;
  orxframework::WindowedInputStream& inner;
};

// Hands every call to another generator while the run goes on. Borrows both.
class GuardedGenerator final : public PrintGenerator {
public:
  GuardedGenerator(RunControl& runControl, PrintGenerator& generator) noexcept
      : control(runControl), inner(generator) {}

  int NewPage() override {
    return control.Enter([&] { inner.NewPage(); });
  }
  int MoveTo(float x, float y) override {
    return control.Enter([&] { inner.MoveTo(x, y); });
  }
  int LineTo(float x, float y) override {
    return control.Enter([&] { inner.LineTo(x, y); });
  }
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    return control.Enter([&] { inner.FillArea(contourCount, pointCounts, points); });
  }
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override {
    return control.Enter([&] { inner.DrawImage(x, y, flags, image); });
  }
  int DefineColor(int index, float red, float green, float blue) override {
    return control.Enter([&] { inner.DefineColor(index, red, green, blue); });
  }
  int SetLineColor(int index) override {
    return control.Enter([&] { inner.SetLineColor(index); });
  }
  int SetFillColor(int index) override {
    return control.Enter([&] { inner.SetFillColor(index); });
  }
  int SetLineWidth(float width) override {
    return control.Enter([&] { inner.SetLineWidth(width); });
  }
  int SetLineCap(int cap) override {
    return control.Enter([&] { inner.SetLineCap(cap); });
  }
  int SetFillRule(int rule) override {
    return control.Enter([&] { inner.SetFillRule(rule); });
  }

private:
  RunControl& control;
  PrintGenerator& inner;
};

}  // namespace orxprint
