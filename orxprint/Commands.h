// The commands. Each does its work on all its files, tells the person what went wrong, and returns
// the gravest status.
#pragma once

#include "orxprint/CommandLine.h"
#include "orxprint/Plugin.h"

namespace orxprint {

[[nodiscard]] Status Render(const Plugin& plugin, const CommonOptions& common,
                            const RenderOptions& options);
[[nodiscard]] Status Check(const Plugin& plugin, const CommonOptions& common,
                           const CheckOptions& options);
[[nodiscard]] Status Info(const Plugin& plugin, const CommonOptions& common,
                          const InfoOptions& options);
[[nodiscard]] Status Trace(const Plugin& plugin, const CommonOptions& common,
                           const TraceOptions& options);
// Loads the plug-in only for a page that has no interpreter inside; throws NoPlugin.
[[nodiscard]] Status View(const CommonOptions& common, const ViewOptions& options);
// Loads the plug-in in child processes only. Throws NoPlugin when there is no file to load.
[[nodiscard]] Status CheckPlugin(const CommonOptions& common, const PluginOptions& options);
[[nodiscard]] Status Find(const Plugin& plugin, const CommonOptions& common,
                          const FindOptions& options);
[[nodiscard]] Status Diff(const Plugin& plugin, const CommonOptions& common,
                          const DiffOptions& options);

}  // namespace orxprint
