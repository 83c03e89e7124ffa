// A generator that writes every call as a line of text: in the form in which interpreters are
// compared, or as JSON for programs.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "host/ORXUnicodeString.h"
#include "host/PrintGenerator.h"

namespace orxdrawing {

// The calls by the names that lines begin with.
inline constexpr std::array<std::string_view, 11> kTraceCalls = {
    "NewPage",      "MoveTo",       "LineTo",       "FillArea",   "DrawImage",  "DefineColor",
    "SetLineColor", "SetFillColor", "SetLineWidth", "SetLineCap", "SetFillRule"};

// A set of calls, a bit for each in the order of kTraceCalls.
using TraceCallSet = std::uint32_t;
inline constexpr TraceCallSet kAllTraceCalls = (1U << kTraceCalls.size()) - 1;

// Where in the document a call comes from.
struct TracePlace {
  std::uint64_t line = 0;  // from 1
  std::uint64_t byte = 0;  // how many bytes stand before it
};
struct TraceOrigin {
  TracePlace token;                     // at the top level of the document
  std::optional<TracePlace> procedure;  // the "{" of the innermost one that ran
};

// Lines gather in a buffer that is handed on when it is large; Flush hands on the rest.
class TraceGenerator final : public PrintGenerator {
public:
  enum class Samples { Summary, Written };
  enum class Form { Lines, Json };
  using Sink = std::function<void(std::string_view text)>;
  // Asked at every line; none where it is not known.
  using OriginTeller = std::function<std::optional<TraceOrigin>()>;

  struct Settings {
    Samples samples = Samples::Summary;
    Form form = Form::Lines;
    TraceCallSet calls = kAllTraceCalls;
    OriginTeller origin;  // without it lines end with the call
  };

  TraceGenerator(Samples samples, Sink lineSink)
      : TraceGenerator(Settings{samples, Form::Lines, kAllTraceCalls, {}}, std::move(lineSink)) {}
  TraceGenerator(Settings traceSettings, Sink lineSink);

  void Report(const ORXUnicodeString& line);
  // A document begins; for several in one text.
  void BeginDocument(std::string_view name);
  // What comes is of that page, which another pass draws; with a line for it where one was before.
  void SetPage(std::uint32_t number) { page = number; }
  void NextPass(std::uint32_t firstPage);
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
  // In the order of kTraceCalls.
  enum Call : std::uint8_t {
    kNewPage,
    kMoveTo,
    kLineTo,
    kFillArea,
    kDrawImage,
    kDefineColor,
    kSetLineColor,
    kSetFillColor,
    kSetLineWidth,
    kSetLineCap,
    kSetFillRule
  };

  [[nodiscard]] bool IsJson() const { return settings.form == Form::Json; }
  [[nodiscard]] bool Wants(Call call) const { return (settings.calls >> call & 1U) != 0; }
  void Add(std::string_view piece) { text += piece; }
  void Add(int number);
  void Add(std::size_t number);
  void Add(float number);
  template <typename Number>
  void AddList(std::span<const Number> numbers);
  // A call with its arguments, separated by commas, unless it is not wanted.
  template <typename... Arguments>
  int Line(Call call, Arguments... arguments);
  void BeginLine(Call call);
  int EndLine();
  void AddOrigin(const TraceOrigin& origin);
  void AddImage(const ORXPixelImage& image);
  // What stands before the value of a member of an image.
  void AddKey(std::string_view key);
  template <typename Value>
  void AddMember(std::string_view key, Value value) {
    AddKey(key);
    Add(value);
  }
  void AddWord(std::string_view word);
  void AddSamples(std::span<const unsigned char> samples);
  // A line of JSON whose only member is a text.
  void AddTextLine(std::string_view key, std::string_view value);
  void HandOnWhenLarge();

  Settings settings;
  Sink sink;
  std::string text;
  std::uint32_t page = 1;
};

}  // namespace orxdrawing
