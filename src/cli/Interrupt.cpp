#include "cli/Interrupt.h"

namespace zu {
namespace {

volatile std::sig_atomic_t hit = 0;

void Note(int /*signal*/) {
    hit = 1;
}

}  // namespace

InterruptScope::InterruptScope() {
    hit = 0;
    struct sigaction action {};
    action.sa_handler = Note;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGINT, &action, &interrupt_);
    ::sigaction(SIGTERM, &action, &terminate_);
    ::sigaction(SIGHUP, nullptr, &hangUp_);
    if (hangUp_.sa_handler != SIG_IGN) ::sigaction(SIGHUP, &action, nullptr);
}

InterruptScope::~InterruptScope() {
    ::sigaction(SIGINT, &interrupt_, nullptr);
    ::sigaction(SIGTERM, &terminate_, nullptr);
    ::sigaction(SIGHUP, &hangUp_, nullptr);
}

bool InterruptScope::Hit() {
    return hit != 0;
}

}  // namespace zu
