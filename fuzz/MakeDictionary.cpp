// Prints the dictionary of the document target: every operator, and words that mean something to
// the scanner, the filters and the page comments.
#include <cstdio>
#include <string_view>

#include "ps/OperatorTable.h"

namespace {

constexpr std::string_view kWords[] = {"%%Page: 1 1\n",
                                       "%%Pages: 2\n",
                                       "%%EOF\n",
                                       "showpage\n",
                                       "16#FF",
                                       "0x1F",
                                       "1E99",
                                       "-1E99",
                                       "2147483647",
                                       "-2147483648",
                                       "/ASCII85Decode",
                                       "/RunLengthDecode",
                                       "/CCITTFaxDecode",
                                       "/Width",
                                       "/Height",
                                       "/BitsPerComponent",
                                       "/Decode",
                                       "/DataSource",
                                       "/Columns",
                                       "/Rows",
                                       "/K",
                                       "~>",
                                       "1 array",
                                       "1 dict",
                                       "/a",
                                       "[1 0 0 1 0 0]",
                                       "{",
                                       "}",
                                       "(",
                                       ")"};

void Print(std::string_view word) {
  std::putchar('"');
  for (const char c : word) {
    if (c == '\n') {
      std::fputs("\\x0A", stdout);
    } else {
      std::putchar(c);
    }
  }
  std::puts("\"");
}

}  // namespace

int main() {
  for (const orxeps::OperatorRow& row : orxeps::OperatorTable) Print(row.name);
  for (const std::string_view word : kWords) Print(word);
  // Tokens of the binary encoding begin with a byte from 128 on.
  for (int type = 128; type < 160; ++type)
    std::printf("\"\\x%02X\"\n", static_cast<unsigned>(type));
}
