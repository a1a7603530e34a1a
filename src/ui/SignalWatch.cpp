#include "ui/SignalWatch.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace zu {
namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};
std::array<int, 2> gPipe{-1, -1};

void OnSignal(int /*number*/) {
    const char byte = 1;
    // A full pipe already carries the message.
    [[maybe_unused]] const auto written = write(gPipe[1], &byte, 1);
}

}  // namespace

SignalWatch::SignalWatch(QObject* parent) : QObject(parent) {
    if (pipe2(gPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    notifier_ = new QSocketNotifier(gPipe[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (read(gPipe[0], &byte, 1) > 0) {
        }
        emit endWanted();
    });
    for (const int number : kSignals) std::signal(number, OnSignal);
}

SignalWatch::~SignalWatch() {
    if (notifier_ == nullptr) return;
    for (const int number : kSignals) std::signal(number, SIG_DFL);
    for (int& end : gPipe) {
        close(end);
        end = -1;
    }
}

}  // namespace zu
