#include "orxprint/DocumentList.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "orxprint/Failure.h"
#include "orxprint/Files.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

bool IsDocumentName(const fs::path& path) {
  constexpr std::array<std::string_view, 3> kEndings = {".eps", ".epsf", ".epsi"};
  std::string ending = NameOf(path.extension());
  std::ranges::transform(ending, ending.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return std::ranges::find(kEndings, ending) != kEndings.end();
}

// What a folder holds, with all folders in it. Links to folders are not followed: a circle of them
// would have no end.
class FolderListing {
public:
  explicit FolderListing(fs::path wholeFolder) : root(std::move(wholeFolder)) {}

  [[nodiscard]] std::vector<ListedDocument> List() {
    LookInto(root);
    std::ranges::sort(found, {}, &Entry::path);
    std::vector<ListedDocument> documents;
    for (Entry& entry : found) {
      const fs::path folder = entry.path.parent_path().lexically_relative(root);
      documents.push_back({NameOf(entry.path), NameOf(folder), std::move(entry.problem)});
    }
    return documents;
  }

private:
  struct Entry {
    fs::path path;
    std::string problem;
  };

  void LookInto(const fs::path& start) {
    std::vector<fs::path> folders = {start};
    while (!folders.empty()) {
      const fs::path folder = std::move(folders.back());
      folders.pop_back();
      std::error_code error;
      std::error_code linkError;  // an entry that is gone is no link
      for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
           entry.increment(error)) {
        const bool isFolder = StatusOf(entry->path()).kind == FileKind::Folder;
        if (isFolder && !fs::is_symlink(entry->symlink_status(linkError)))
          folders.push_back(entry->path());
        if (!isFolder && IsDocumentName(entry->path())) found.push_back({entry->path(), {}});
      }
      if (error) found.push_back({folder, "the folder cannot be read: " + error.message()});
    }
  }

  fs::path root;
  std::vector<Entry> found;
};

std::vector<std::string> NamesFrom(const std::string& file) {
  std::ifstream opened;
  if (file != "-") opened.open(PathOf(file), std::ios::binary);
  std::istream& input = file == "-" ? std::cin : opened;
  std::vector<std::string> names;
  for (std::string name; std::getline(input, name, '\0');) {
    if (!name.empty()) names.push_back(name);
  }
  if (input.bad() || (file != "-" && !opened.is_open())) {
    throw Failure(file + ": cannot read the names of the documents");
  }
  return names;
}

}  // namespace

std::vector<ListedDocument> ListDocuments(const DocumentChoice& choice) {
  std::vector<std::string> names = choice.names;
  if (!choice.namesFrom.empty())
    std::ranges::move(NamesFrom(choice.namesFrom), std::back_inserter(names));
  std::vector<ListedDocument> documents;
  for (const std::string& name : names) {
    const bool isFolder = name != "-" && StatusOf(PathOf(name)).kind == FileKind::Folder;
    if (isFolder && choice.takesFolders) {
      std::vector<ListedDocument> held = FolderListing(PathOf(name)).List();
      if (held.empty()) Warn(name, "holds no file that ends with .eps, .epsf or .epsi");
      std::ranges::move(held, std::back_inserter(documents));
    } else {
      documents.push_back({name, {}, isFolder ? "is a directory; -R takes what it holds" : ""});
    }
  }
  std::vector<ListedDocument> share;
  for (std::size_t i = choice.shard.number - 1; i < documents.size(); i += choice.shard.count) {
    share.push_back(std::move(documents[i]));
  }
  return share;
}

}  // namespace orxprint
