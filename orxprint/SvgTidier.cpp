#include "orxprint/SvgTidier.h"

#include <algorithm>

namespace orxprint {

namespace {

constexpr std::size_t kLongestSegment = 4096;
constexpr std::string_view kPictureStart = "<image id=";
constexpr std::string_view kSharpPictureStart =
    "<image image-rendering=\"optimizeSpeed\" style=\"image-rendering:pixelated\" id=";

// Whether the text is one of Cairo's names, as "image12" or "#surface3".
bool IsNumberedName(std::string_view text) {
  const std::size_t digits = text.find_first_of("0123456789");
  if (digits == std::string_view::npos) return false;
  const std::string_view kind = text.substr(text.starts_with('#') ? 1 : 0);
  const bool isOurs = kind.starts_with("image") || kind.starts_with("surface");
  return isOurs && text.find_first_not_of("0123456789", digits) == std::string_view::npos;
}

}  // namespace

bool SvgTidier::Write(std::string_view text) {
  bool taken = true;
  while (!text.empty() && taken) {
    const std::size_t quote = text.find('"');
    const std::string_view piece = text.substr(0, quote);
    if (passing) {
      taken = sink(piece);
    } else {
      segment += piece;
      if (segment.size() > kLongestSegment) {
        passing = true;
        taken = EndSegment();
      }
    }
    if (quote == std::string_view::npos) break;
    if (!passing) taken = taken && EndSegment();
    passing = false;
    taken = taken && sink("\"");
    text.remove_prefix(quote + 1);
  }
  return taken;
}

bool SvgTidier::Finish() { return EndSegment(); }

bool SvgTidier::EndSegment() {
  std::string done;
  std::swap(done, segment);
  if (IsNumberedName(done)) return sink(Renumbered(done));
  if (!done.ends_with(kPictureStart)) return sink(done);
  done.resize(done.size() - kPictureStart.size());
  return sink(done) && sink(kSharpPictureStart);
}

std::string SvgTidier::Renumbered(std::string_view name) {
  const std::size_t start = name.starts_with('#') ? 1 : 0;
  const std::size_t digits = name.find_first_of("0123456789");
  const auto number = numbers.try_emplace(std::string(name.substr(start)), numbers.size() + 1);
  return std::string(name.substr(0, digits)) + std::to_string(number.first->second);
}

}  // namespace orxprint
