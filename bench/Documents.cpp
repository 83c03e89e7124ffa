#include "bench/Documents.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <random>

namespace orxbench {

namespace {

constexpr std::string_view kHeader = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 600 800\n";

// Coordinates as programs write them: up to three digits with two decimals.
class Writer {
public:
  explicit Writer(std::string_view prolog) : text(kHeader) { text += prolog; }

  Writer& Coordinates(int count) {
    for (int i = 0; i < count; ++i) {
      std::array<char, 16> number;
      const int hundredths = static_cast<int>(random() % 60000);
      const int length = std::snprintf(number.data(), number.size(), "%d.%02d ", hundredths / 100,
                                       hundredths % 100);
      text.append(number.data(), static_cast<std::size_t>(length));
    }
    return *this;
  }
  Writer& Add(std::string_view piece) {
    text += piece;
    return *this;
  }
  [[nodiscard]] std::string Finish() {
    text += "%%EOF\n";
    return std::move(text);
  }

private:
  std::string text;
  std::mt19937 random{20};
};

std::string Lines(std::size_t lines, std::string_view prolog, std::string_view move,
                  std::string_view line, std::string_view paint) {
  Writer writer(prolog);
  for (std::size_t i = 0; i < lines; ++i) {
    if (i % 8 == 0) {
      if (i > 0) writer.Add(paint);
      writer.Coordinates(2).Add(move);
    }
    writer.Coordinates(2).Add(line);
  }
  return writer.Add(paint).Finish();
}

}  // namespace

std::string PlainLines(std::size_t lines) {
  return Lines(lines, "", "moveto\n", "lineto\n", "stroke\n");
}

std::string PrologLines(std::size_t lines) {
  return Lines(lines,
               "/m { moveto } bind def /l { lineto } bind def\n"
               "/s { gsave 0.5 setlinewidth stroke grestore newpath } bind def\n",
               "m\n", "l\n", "s\n");
}

std::string Curves(std::size_t outlines) {
  Writer writer("/c { curveto } bind def\n");
  for (std::size_t i = 0; i < outlines; ++i) {
    writer.Add("gsave [1.1 0 0 0.9 3 4] concat ").Coordinates(2).Add("moveto\n");
    for (int curve = 0; curve < 4; ++curve) writer.Coordinates(6).Add("c\n");
    writer.Add("closepath 0.1 0.5 0.9 setrgbcolor fill grestore\n");
  }
  return writer.Finish();
}

std::string Circles(std::size_t circles) {
  Writer writer("");
  for (std::size_t i = 0; i < circles; ++i) {
    writer.Add("newpath ").Coordinates(3).Add("0 360 arc stroke\n");
  }
  return writer.Finish();
}

std::string Arithmetic(std::size_t rounds, std::size_t depth) {
  Writer writer(
      "/half { 2 div } bind def /mid { 1 index add half exch pop } def\n"
      "/loop { dup 0 eq { pop } { 1 sub 3 4 mid 2 mul pop loop } ifelse } def\n");
  for (std::size_t i = 0; i < depth; ++i) writer.Add("1 dict begin\n");
  for (std::size_t i = 0; i < rounds / 1000; ++i) writer.Add("1000 loop\n");
  return writer.Finish();
}

std::string EncodeBase85(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() * 5 / 4 + bytes.size() / 60 + 16);
  for (std::size_t i = 0; i < bytes.size(); i += 4) {
    const std::size_t length = std::min<std::size_t>(4, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const auto byte = k < length ? static_cast<unsigned char>(bytes[i + k]) : 0U;
      group = group << 8 | byte;
    }
    std::array<char, 5> digits;
    for (std::size_t k = 5; k-- > 0; group /= 85) digits[k] = static_cast<char>('!' + group % 85);
    if (length == 4 && std::string_view(digits.data(), 5) == "!!!!!") {
      text += 'z';
    } else {
      text.append(digits.data(), length + 1);
    }
    if (i % 60 == 56) text += '\n';
  }
  return text + "~>\n";
}

std::string GreyImage(std::size_t bytes) {
  constexpr std::size_t kWidth = 1000;
  std::string samples(bytes, '\0');
  std::mt19937 random{85};
  for (char& sample : samples) sample = static_cast<char>(random());
  const std::string height = std::to_string(bytes / kWidth);
  return std::string(kHeader) + "500 0 0 500 0 0 6 array astore concat\n/src currentfile " +
         "/ASCII85Decode filter def\n<< /ImageType 1 /Width 1000 /Height " + height +
         " /BitsPerComponent 8 /DataSource src >> image\n" + EncodeBase85(samples) + "%%EOF\n";
}

std::string EncryptedSection(std::size_t bytes) {
  std::string text = std::string(kHeader) + "currentfile eexec\n";
  for (std::size_t i = 0; i < bytes; i += 64) {
    text += "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcde\n";
  }
  return text + "cleartomark\n0 0 moveto 1 1 lineto stroke\n%%EOF\n";
}

}  // namespace orxbench
