#pragma once

#include <csignal>

namespace zu {

/// For the length of a scope SIGINT, SIGTERM and SIGHUP do not end the process but are noted. A SIGHUP that
/// was ignored, as behind nohup, stays so.
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
    struct sigaction hangUp_ {};
};

}  // namespace zu
