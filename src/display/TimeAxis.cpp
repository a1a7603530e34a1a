#include "display/TimeAxis.h"

#include <algorithm>

namespace zu {

std::int64_t ShownSamples(std::int64_t pos, std::int32_t zoom, std::int32_t width, std::int64_t length) {
    const std::int64_t first = std::clamp<std::int64_t>(pos, 0, std::max<std::int64_t>(length, 0));
    return std::max<std::int64_t>(std::min(SamplesInPixels(width, zoom), length - first), 0);
}

}  // namespace zu
