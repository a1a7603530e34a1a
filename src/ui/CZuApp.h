#pragma once

#include <string>
#include <vector>

namespace zu {

/// The application: command line, desktop, controller, message loop, exit path. Returns the exit code.
int RunZu(const std::vector<std::string>& arguments);

}  // namespace zu
