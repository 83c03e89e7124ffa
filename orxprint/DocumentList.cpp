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

// Links to folders are not followed: a circle of them would have no end.
void AddFolder(const fs::path& folder, std::vector<ListedDocument>& documents) {
  std::vector<fs::path> found;
  std::error_code error;
  for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (IsDocumentName(entry->path()) && StatusOf(entry->path()).kind != FileKind::Folder) {
      found.push_back(entry->path());
    }
  }
  if (error) throw Failure(NameOf(folder) + ": cannot read the folder: " + error.message());
  std::ranges::sort(found);
  for (const fs::path& path : found) {
    documents.push_back({NameOf(path), NameOf(path.parent_path().lexically_relative(folder))});
  }
}

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
      AddFolder(PathOf(name), documents);
    } else {
      documents.push_back({name, {}});
    }
  }
  std::vector<ListedDocument> share;
  for (std::size_t i = choice.shard.number - 1; i < documents.size(); i += choice.shard.count) {
    share.push_back(std::move(documents[i]));
  }
  return share;
}

}  // namespace orxprint
