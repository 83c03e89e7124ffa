// Makes SVG text from Cairo the same for the same drawing, and its pictures sharp.
//
// Cairo numbers pictures and groups by a count that runs through the whole life of the process, so
// the text would depend on what was drawn before. Here they are numbered anew for each document.
// Pictures are marked to keep sharp pixel edges when enlarged, which Cairo does not say.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orxprint {

// Takes the text in pieces of any length and hands it on in pieces. Long attribute values, as
// pictures have, pass through without being gathered.
class SvgTidier {
public:
  using Sink = std::function<bool(std::string_view text)>;

  explicit SvgTidier(Sink textSink) : sink(std::move(textSink)) {}

  // Returns whether the sink took everything so far.
  bool Write(std::string_view text);
  bool Finish();

private:
  // A segment is what stands between two quotation marks.
  bool EndSegment();
  [[nodiscard]] std::string Renumbered(std::string_view name);

  Sink sink;
  std::string segment;
  bool passing = false;  // the segment is too long to be of interest, and is handed on as it comes
  std::map<std::string, std::size_t, std::less<>> numbers;
};

}  // namespace orxprint
