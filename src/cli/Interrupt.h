#pragma once

#include <csignal>

namespace zu {

/// For the length of a scope SIGINT and SIGTERM do not end the process but are noted.
class InterruptScope {
  public:
    InterruptScope();
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

    /// Whether one of the signals has come since the scope began.
    static bool Hit();

  private:
    struct sigaction interrupt_ {};
    struct sigaction terminate_ {};
};

}  // namespace zu
