// The checks of a build of the plug-in: what every host may rely on, each tried on the loaded
// module.
//
// A check runs in a process of its own, for it may crash, hang or leave the process's settings
// changed. It loads the module itself, meets it through checked streams and generators only, and
// throws CheckFailed when something is not as the interfaces of host/ say.
#pragma once

#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace orxprint {

// The text says what is wrong.
struct CheckFailed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct PluginCheck {
  const char* name;
  const char* rule;  // what holds, for --list
  // Returns a remark, such as why there was nothing to check, or an empty text.
  std::string (*run)(const std::filesystem::path& module);
};

// All of them, in the order in which they are to be run.
[[nodiscard]] std::vector<PluginCheck> PluginChecks();

// Its families: how the module is loaded, what passes and questions answer, and what it does when
// its host fails, stops it or goes away.
[[nodiscard]] std::span<const PluginCheck> LoadingChecks();
[[nodiscard]] std::span<const PluginCheck> PassChecks();
[[nodiscard]] std::span<const PluginCheck> QuestionChecks();
[[nodiscard]] std::span<const PluginCheck> FaultChecks();
[[nodiscard]] std::span<const PluginCheck> StageChecks();

}  // namespace orxprint
