#include "orxprint/OptionTable.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace orxprint {

namespace {

using Json = nlohmann::ordered_json;

Json NamesOf(const CLI::Option& option) {
  Json names = Json::array();
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  if (names.empty()) names.push_back(option.get_name());
  return names;
}

// The word for the value, without what the parser adds about its range.
std::string ValueOf(const CLI::Option& option) {
  if (option.get_items_expected_max() == 0) return {};
  const std::string type = option.get_type_name();
  return type.substr(0, type.find(':'));
}

Json OptionsOf(const CLI::App& app) {
  Json options = Json::array();
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_group().empty()) continue;
    options.push_back({{"names", NamesOf(*option)},
                       {"value", ValueOf(*option)},
                       {"isRequired", option->get_required()},
                       {"repeats", option->get_items_expected_max() > 1},
                       {"description", option->get_description()}});
  }
  return options;
}

}  // namespace

std::string OptionTable(const CLI::App& app) {
  Json table = {{"program", app.get_name()},
                {"version", ORXPRINT_VERSION},
                {"description", app.get_description()},
                {"notes", app.get_footer()},
                {"options", OptionsOf(app)},
                {"commands", Json::array()}};
  for (const CLI::App* command : app.get_subcommands({})) {
    table["commands"].push_back({{"name", command->get_name()},
                                 {"description", command->get_description()},
                                 {"notes", command->get_footer()},
                                 {"options", OptionsOf(*command)}});
  }
  return table.dump(2) + "\n";
}

}  // namespace orxprint
