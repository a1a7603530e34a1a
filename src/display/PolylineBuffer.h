#pragma once

#include <array>
#include <cstddef>

#include "display/Canvas.h"

namespace zu {

inline constexpr std::size_t kPolylinePoints = 13500;

/// The one array of points that all traces share. A trace adds its points and draws them with one call; a
/// trace that is wider than the array goes on from its last point in a further call.
class PolylineBuffer {
  public:
    void Add(Canvas& canvas, std::int32_t x, std::int32_t y) {
        if (kPolylinePoints - count_ < kSpare) Continue(canvas);
        points_[count_++] = {x, y};
    }
    /// Adds a point while there is room; curves end there.
    void AddIfRoom(std::int32_t x, std::int32_t y) {
        if (count_ < kPolylinePoints) points_[count_++] = {x, y};
    }
    /// Draws what was added and empties the array; a single point draws nothing.
    void Draw(Canvas& canvas);
    [[nodiscard]] std::size_t Count() const { return count_; }
    [[nodiscard]] const Point& Last() const { return points_[count_ - 1]; }

  private:
    static constexpr std::size_t kSpare = 5;
    void Continue(Canvas& canvas);

    std::array<Point, kPolylinePoints> points_{};
    std::size_t count_ = 0;
};

}  // namespace zu
