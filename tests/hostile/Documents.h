// Ten small documents that between them use every kind of thing the library allocates, reads and
// draws, without keeping objects alive in circles.
#pragma once

#include <string>
#include <vector>

#include "tests/hostile/HostileRunner.h"
#include "tests/support/Base85.h"

namespace orxtests {

[[nodiscard]] inline std::vector<std::string> TenDocuments() {
  const std::string fourBytes = Base85("abcd");
  const std::string fax = Base85(std::string("\xC0\x01\0\x10", 4));
  return {
      // Paths and pages.
      "%%Pages: 2\n%%BoundingBox: 0 0 9 9\n%%Page: a 1\n1 2 moveto 3 4 lineto 5 5 rlineto "
      "closepath "
      "stroke\n%%Page: b 2\n0 0 9 0 360 arc fill showpage\n%%EOF\n",
      // Graphics states, curves and matrices.
      "gsave 2 2 scale 30 rotate 1 1 moveto 1 2 3 4 5 6 curveto gsave 7 8 lineto grestore eofill "
      "grestore matrix currentmatrix 6 array astore pop 1 2 transform 3 3 matrix itransform\n",
      // Strings, names and numbers.
      "/text (some (nested) text \\) here) def text length text 0 65 put text 1 get /long-name-of-"
      "a-thing text eq 16#FF 1.5E3 -7 0e5 round neg mod\n",
      // Procedures that call each other.
      "/f {dup 0 eq {pop} {1 sub f} ifelse} bind def 20 f /g {{1 2 add} exec true {3} if} def g\n",
      // Arrays and copies of them.
      "[1 [2 [3 (four)] {5 six}] /seven] dup 1 array copy exch aload pop 2 copy 3 1 roll 1 index 4 "
      "array astore pop mark 1 2 counttomark cleartomark\n",
      // Dictionaries and resources.
      "5 dict begin /a 1 def /b << /c 2 /d (e) >> def b /c get currentdict end pop /k b /Cat "
      "defineresource pop /k /Cat findresource pop /k /Cat undefineresource /a where\n",
      // Images: grey, then fax through two filters.
      "<< /Width 2 /Height 2 /BitsPerComponent 8 /Decode [0 1] /DataSource currentfile "
      "/ASCII85Decode "
      "filter >> image\n" +
          fourBytes +
          "<< /Width 8 /Height 2 /BitsPerComponent 1 /DataSource currentfile /ASCII85Decode filter "
          "<< /K -1 /Columns 8 /Rows 2 >> /CCITTFaxDecode filter >> image\n" +
          fax,
      // A colour image that is mirrored, row by row.
      "-9 9 scale 4 1 8 matrix {x /ASCII85Decode x /RunLengthDecode} {x /ASCII85Decode x "
      "/RunLengthDecode} {x /ASCII85Decode x /RunLengthDecode} true 3 colorimage\n" +
          Repeated(3, Base85("\x03wxyz\x80")),
      // Binary tokens.
      std::string("\x84\0\0\1\0\x88\5\x8A\x3F\x80\0\0\x8D\1\x8E\3abc\x92\1 stroke ", 24) + "\n",
      // An encrypted part, comments, and errors of all kinds.
      "mark currentfile eexec\n0123 4567\n89 cleartomark\n% nothing\nadd exch pop undefined 5 "
      "array 9 "
      "get end end def currentdict forall (unfinished\n",
  };
}

}  // namespace orxtests
