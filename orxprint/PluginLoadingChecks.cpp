// How a build of the plug-in is loaded, found and unloaded.
#include <algorithm>

#include "orxprint/ExportedNames.h"
#include "orxprint/Platform.h"
#include "orxprint/Plugin.h"
#include "orxprint/PluginCandidate.h"
#include "orxprint/PluginChecks.h"

namespace orxprint {

namespace {

const std::string kFactoryName = std::string("fctCreate") + kPluginClassName;

std::string Loads(const std::filesystem::path& file) {
  const Candidate candidate(file);
  return {};
}

std::string ExportsTwo(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string& name : {kFactoryName, std::string(kPluginMarkerName)}) {
    Require(FindFunction(candidate.Handle(), name.c_str()), "does not export a function " + name);
  }
  const auto names = ExportedNames(file);
  if (!names) return "of what else it exports nothing is known: no 64-bit ELF file";
  for (const std::string& name : *names) {
    Require(name == kFactoryName || name == kPluginMarkerName, "exports " + name + " as well");
  }
  return {};
}

std::string Registers(const std::filesystem::path& file) {
  Require(!ORXFillDictionary::Find(kPluginClassName), "the class is there before it is loaded");
  Candidate candidate(file);
  const auto exported =
      reinterpret_cast<ORXFactoryFunction>(FindFunction(candidate.Handle(), kFactoryName.c_str()));
  Require(candidate.Factory() == exported, "registers another factory than it exports");
  candidate.Unload();
  Require(!ORXFillDictionary::Find(kPluginClassName), "leaves its class when it is unloaded");
  return {};
}

std::string LoadsAgain(const std::filesystem::path& file) {
  for (int round = 0; round < 10; ++round) {
    Candidate candidate(file);
    RequireSameCalls(Host(candidate, kShapes).Draw(), std::string(kShapesCalls));
    candidate.Unload();
  }
  return {};
}

constexpr PluginCheck kChecks[] = {
    {"load", "it loads and its marker says that it is a module of the framework", &Loads},
    {"exports", "it exports the factory and the marker and nothing else", &ExportsTwo},
    {"register", "its class has the exported factory while it is loaded, and only then",
     &Registers},
    {"reload", "unloaded and loaded again it draws the same", &LoadsAgain},
};

}  // namespace

std::span<const PluginCheck> LoadingChecks() { return kChecks; }

std::vector<PluginCheck> PluginChecks() {
  std::vector<PluginCheck> all;
  for (const auto& family :
       {LoadingChecks(), PassChecks(), QuestionChecks(), FaultChecks(), StageChecks()}) {
    all.insert(all.end(), family.begin(), family.end());
  }
  return all;
}

}  // namespace orxprint
