#pragma once

#include <string>
#include <string_view>

#include "core/App.h"

namespace zu {

/// Connects a scene, by its place in kSimScenes, to the simulated instrument and sets up what is seen of it:
/// names, groups, lines, trigger, rate, zoom and cursors. A running capture goes on with it. False without a
/// simulated instrument or such a scene.
bool ShowScene(App& app, int scene);
/// The same by name; an empty name is no scene.
bool ShowSceneNamed(App& app, std::string_view name);

/// Connects a recording to the simulated instrument and takes over its channel names. False, after a message,
/// when the file cannot be used.
bool ReplayFile(App& app, const std::string& path);
/// The command "Replay file...": file dialog, then ReplayFile.
void ReplayCommand(App& app);

}  // namespace zu
