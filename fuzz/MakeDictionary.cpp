// Prints the part of the document target's dictionary that the operator table determines.
#include <cstdio>
#include <string>

#include "plugin/SystemOperators.h"

int main() {
  for (const orxeps::OperatorRow& row : orxeps::SystemOperators().Rows()) {
    std::printf("\"%s\"\n", std::string(row.name).c_str());
  }
  // Tokens of the binary encoding begin with a byte from 128 on.
  for (int type = 128; type < 160; ++type)
    std::printf("\"\\x%02X\"\n", static_cast<unsigned>(type));
}
