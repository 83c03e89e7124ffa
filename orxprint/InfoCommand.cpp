// The command info: what is known of documents, for people or for programs.
#include <cerrno>

#include "orxprint/Commands.h"
#include "orxprint/Description.h"
#include "orxprint/InfoText.h"
#include "orxprint/Messages.h"
#include "orxprint/Session.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

Status DescribeFile(const Plugin& plugin, const CommonOptions& common, bool isQuick,
                    Description& description) {
  const std::string file = description.file;
  const Outcome outcome = Attempt(file, [&] {
    Session session(plugin, common, file);
    description = DescribeDocument(session, isQuick);
    if (description.statements.areNamesLeftOut) {
      Warn(file, "only the first " + std::to_string(Statements::kMostNames) +
                     " fonts and resources are listed");
    }
    const Status status = session.TellShortfalls();
    return description.statements.isPostScript ? status : Gravest(status, Status::FileFailed);
  });
  description.error = outcome.problem;
  return outcome.status;
}

Status Print(std::string_view text, const CommonOptions& common) {
  StandardOutput output(DeadlineIn(common.timeLimit.Given()));
  if (output.Write(text)) return Status::Done;
  Tell("cannot write standard output: " + ErrorText(output.Error()));
  return output.Error() == ETIMEDOUT ? Status::LimitReached : Status::FileFailed;
}

}  // namespace

Status Info(const Plugin& plugin, const CommonOptions& common, const InfoOptions& options) {
  const Units units = Units::FromEnvironment();
  Status gravest = Status::Done;
  Json objects = Json::array();
  bool isFirst = true;
  for (const std::string& file : options.files) {
    Description description;
    description.file = file;
    gravest = Gravest(gravest, DescribeFile(plugin, common, options.quick, description));
    if (options.json) {
      objects.push_back(ForPrograms(description, units));
    } else if (description.error.empty()) {
      const std::string separator = isFirst ? "" : "\n";
      const Status printed = Print(separator + ForPeople(description, units), common);
      // Nobody reads what the other files would say either.
      if (printed != Status::Done) return Gravest(gravest, printed);
      isFirst = false;
    }
  }
  return options.json ? Gravest(gravest, Print(Dump(objects, 2), common)) : gravest;
}

}  // namespace orxprint
