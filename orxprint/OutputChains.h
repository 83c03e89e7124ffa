// Which documents may write the same file, so that they have to be drawn one after another: the
// first of them then gets it, however many are drawn at once.
#pragma once

#include <string>
#include <vector>

#include "orxprint/Workers.h"

namespace orxprint {

// `outputs` has the name of each document's output as it is without numbers of pages. With
// `numbered`, pages may go to names such as "name-2.svg" as well.
[[nodiscard]] std::vector<Chain> ChainsOf(const std::vector<std::string>& outputs, bool numbered);

}  // namespace orxprint
