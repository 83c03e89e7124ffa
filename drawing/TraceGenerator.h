// A generator that writes every call as a line of text, the form in which interpreters are
// compared.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "host/ORXUnicodeString.h"
#include "host/PrintGenerator.h"

namespace orxdrawing {

// Lines gather in a buffer that is handed on when it is large; Flush hands on the rest.
class TraceGenerator final : public PrintGenerator {
public:
  enum class Samples { Summary, Written };
  using Sink = std::function<void(std::string_view text)>;

  TraceGenerator(Samples samples, Sink sink);

  void Report(const ORXUnicodeString& line);
  void Flush();

  int NewPage() override;
  int MoveTo(float x, float y) override;
  int LineTo(float x, float y) override;
  int FillArea(int contourCount, int* pointCounts, float* points) override;
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override;
  int DefineColor(int index, float red, float green, float blue) override;
  int SetLineColor(int index) override;
  int SetFillColor(int index) override;
  int SetLineWidth(float width) override;
  int SetLineCap(int cap) override;
  int SetFillRule(int rule) override;

private:
  void Add(std::string_view piece) { text += piece; }
  void Add(int number);
  void Add(float number);
  template <typename Number>
  void AddList(std::span<const Number> numbers);
  // A call with its arguments, separated by commas.
  template <typename... Arguments>
  int Line(std::string_view operation, Arguments... arguments);
  int EndLine();
  void AddSamples(std::span<const unsigned char> samples);
  void HandOnWhenLarge();

  bool samplesWritten;
  Sink sink;
  std::string text;
};

}  // namespace orxdrawing
