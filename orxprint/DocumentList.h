// Which documents a command works on: the files and folders that were named, a list of names from a
// file, and of all these the share of one machine among several.
//
// The order is that of the names given; what a folder holds is sorted by name, so that the same
// folders give the same list everywhere.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orxprint {

// Of `count` machines the one with this number takes every count-th document.
struct Shard {
  std::size_t number = 1;  // from 1
  std::size_t count = 1;
};

struct DocumentChoice {
  std::vector<std::string> names;  // of files and folders; "-" is standard input
  bool takesFolders = false;       // with all folders in them
  std::string namesFrom;           // a file of names, each ended by a zero byte; empty for none
  Shard shard;
};

struct ListedDocument {
  std::string name;
  std::string folder;   // within the folder that was named; empty for files that were named
  std::string problem;  // why it is no document, where that is known already

  friend bool operator==(const ListedDocument&, const ListedDocument&) = default;
};

// Folders that cannot be read, or were not to be taken, count as documents with a problem; the
// person is warned of those that hold no document. Throws Failure when the list of names cannot be
// read.
[[nodiscard]] std::vector<ListedDocument> ListDocuments(const DocumentChoice& choice);

}  // namespace orxprint
