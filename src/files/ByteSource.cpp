#include "files/ByteSource.h"

#include <algorithm>
#include <cstring>

namespace zu {

bool ByteSource::Fill() {
    at_ = 0;
    end_ = file_.ReadAt(offset_, window_);
    offset_ += static_cast<std::int64_t>(end_);
    return end_ != 0;
}

std::optional<char> ByteSource::Next() {
    if (at_ == end_ && !Fill()) return std::nullopt;
    return static_cast<char>(window_[at_++]);
}

bool ByteSource::TakeUntil(char wanted) {
    do {
        const void* found = at_ == end_ ? nullptr : std::memchr(&window_[at_], wanted, end_ - at_);
        if (found != nullptr) {
            at_ = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - window_.data()) + 1;
            return true;
        }
    } while (Fill());
    return false;
}

void ByteSource::Skip(std::int64_t bytes) {
    const auto inWindow = std::min<std::int64_t>(bytes, static_cast<std::int64_t>(end_ - at_));
    at_ += static_cast<std::size_t>(inWindow);
    offset_ += bytes - inWindow;
    if (at_ == end_) at_ = end_ = 0;
}

void ByteSource::Read(std::span<std::uint8_t> destination) {
    const std::size_t inWindow = std::min(destination.size(), end_ - at_);
    std::copy_n(window_.begin() + static_cast<std::ptrdiff_t>(at_), inWindow, destination.begin());
    at_ += inWindow;
    const auto rest = destination.subspan(inWindow);
    if (rest.empty()) return;
    const std::size_t got = file_.ReadAt(offset_, rest, std::span(window_).first(kHeaderWindow));
    offset_ += static_cast<std::int64_t>(got);
    at_ = 0;
    end_ = got > rest.size() ? got - rest.size() : 0;
}

}  // namespace zu
