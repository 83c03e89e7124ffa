// Descriptions of documents as info prints them.
//
// The description is complete by then; these only say it, in text or as JSON.
#pragma once

#include <string>

#include "orxprint/Description.h"
#include "orxprint/JsonText.h"

namespace orxprint {

// Lines of "Key: value".
[[nodiscard]] std::string ForPeople(const Description& description, Units units);
// As docs/info.schema.json says.
[[nodiscard]] Json ForPrograms(const Description& description, Units units);

}  // namespace orxprint
