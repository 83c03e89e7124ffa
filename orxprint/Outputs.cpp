#include "orxprint/Outputs.h"

#include "orxprint/Failure.h"

namespace orxprint {

Outputs::Outputs(const std::vector<ListedDocument>& documents) {
  for (std::size_t i = 0; i < documents.size(); ++i) {
    if (const auto identity = IdentityOf(documents[i].name)) inputs.emplace(*identity, i);
  }
}

void Outputs::Claim(const std::string& name, std::size_t document) {
  const std::optional<FilePlace> place = PlaceOf(name);
  if (!place) return;
  const auto identity = IdentityOf(name);
  if (identity && inputs.contains(*identity)) {
    throw Failure("the output " + name + " would replace the document " +
                  (inputs.at(*identity) == document ? "itself" : "of that name"));
  }
  if (owners.emplace(*place, document).first->second != document) {
    throw Failure("the output " + name + " is that of another document");
  }
}

}  // namespace orxprint
