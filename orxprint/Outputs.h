// What one command writes, seen as a whole: no output takes the place of an input, and no two
// documents the same place.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "orxprint/DocumentList.h"
#include "orxprint/OutputFile.h"

namespace orxprint {

class Outputs {
public:
  // The files that the command reads, "-" aside.
  explicit Outputs(const std::vector<ListedDocument>& documents);

  // Makes the place of an output the `document`-th document's, however often. Throws Failure when
  // an input lies there or it is another document's.
  void Claim(const std::string& name, std::size_t document);

private:
  std::map<FileIdentity, std::size_t> inputs;
  std::map<FilePlace, std::size_t> owners;
};

}  // namespace orxprint
