#include "bench/DocumentWriter.h"

#include <cstdlib>

namespace orxbench {

DocumentWriter::DocumentWriter(std::size_t bytes) : size(bytes) {
  text.reserve(bytes + bytes / 8);
  text =
      "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 612 792\n%%Pages: 1\n%%EndComments\n"
      "/Drawing 40 dict def Drawing begin\n"
      "/M {moveto} bind def /L {lineto} bind def /C {curveto} bind def\n"
      "/N {newpath} bind def /H {closepath} bind def\n"
      "/S {stroke} bind def /F {fill} bind def\n"
      "/Gs {gsave} bind def /Gr {grestore} bind def\n"
      "/W {setlinewidth} bind def /Rgb {setrgbcolor} bind def\n"
      "0.4 W\n";
}

DocumentWriter& DocumentWriter::Integer(int value) {
  text += std::to_string(value);
  text += ' ';
  return *this;
}

DocumentWriter& DocumentWriter::Decimal(int value, int decimals) {
  int unit = 1;
  for (int i = 0; i < decimals; ++i) unit *= 10;
  if (value < 0) text += '-';
  text += std::to_string(std::abs(value) / unit);
  const std::string fraction = std::to_string(std::abs(value) % unit);
  text += '.';
  text.append(static_cast<std::size_t>(decimals) - fraction.size(), '0');
  text += fraction;
  text += ' ';
  return *this;
}

std::string DocumentWriter::Finish() {
  text += "end\n%%Trailer\n%%EOF\n";
  return std::move(text);
}

}  // namespace orxbench
