// Writes a document for measuring, or tells which kinds there are.
//
//   orxeps_document KIND MEGABYTES > FILE
//   orxeps_document --list
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bench/Documents.h"

int main(int argc, char** argv) {
  const std::string_view name = argc > 1 ? argv[1] : "";
  if (argc == 2 && name == "--list") {
    for (const orxbench::Kind& kind : orxbench::Kinds()) {
      std::printf("%s\t%s\n", kind.name.data(), kind.description.data());
    }
    return 0;
  }
  const double megabytes = argc == 3 ? std::strtod(argv[2], nullptr) : 0.0;
  for (const orxbench::Kind& kind : orxbench::Kinds()) {
    if (name != kind.name || !(megabytes > 0.0 && megabytes <= 2000.0)) continue;
    const std::string document = kind.make(static_cast<std::size_t>(megabytes * 1e6));
    return std::fwrite(document.data(), 1, document.size(), stdout) == document.size() ? 0 : 1;
  }
  std::fputs("usage: orxeps_document KIND MEGABYTES | --list\n", stderr);
  return 2;
}
