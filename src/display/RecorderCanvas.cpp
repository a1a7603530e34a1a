#include "display/RecorderCanvas.h"

#include <array>
#include <cstdio>

namespace zu {
namespace {

constexpr std::array<const char*, 6> kFontNames{"text", "small", "large", "label", "printer", "printer-bold"};

template <typename... Args>
void Append(std::string& out, const char* format, Args... args) {
    std::array<char, 96> line{};
    std::snprintf(line.data(), line.size(), format, args...);
    out += line.data();
}

void AppendRect(std::string& out, const char* name, const Rect& r) {
    Append(out, "%s %d,%d %d,%d", name, r.Left, r.Top, r.Right, r.Bottom);
}

void AppendOp(std::string& out, const RecorderCanvas::Op& op) {
    using Kind = RecorderCanvas::Kind;
    switch (op.What) {
        case Kind::Pen:
            Append(out, "pen %06x", op.Color);
            break;
        case Kind::TextColor:
            Append(out, "color %06x", op.Color);
            break;
        case Kind::Font:
            Append(out, "font %s", kFontNames[static_cast<std::size_t>(op.Font)]);
            break;
        case Kind::Move:
            Append(out, "move %d,%d", op.Area.Left, op.Area.Top);
            break;
        case Kind::Line:
            Append(out, "line %d,%d", op.Area.Left, op.Area.Top);
            break;
        case Kind::Polyline:
            out += "poly";
            for (const Point& p : op.Points) Append(out, " %d,%d", p.X, p.Y);
            break;
        case Kind::Fill:
            AppendRect(out, "fill", op.Area);
            Append(out, " %06x", op.Color);
            break;
        case Kind::Text:
            Append(out, "text %d,%d ", op.Area.Left, op.Area.Top);
            out += op.String;
            break;
        case Kind::Clip:
            AppendRect(out, "clip", op.Area);
            break;
        case Kind::Unclip:
            out += "unclip";
            break;
    }
    out += '\n';
}

std::int32_t TopOf(const RecorderCanvas::Op& op) {
    return op.Points.empty() ? op.Area.Top : op.Points.front().Y;
}

bool Draws(const RecorderCanvas::Op& op) {
    using Kind = RecorderCanvas::Kind;
    return op.What != Kind::Pen && op.What != Kind::TextColor && op.What != Kind::Font &&
           op.What != Kind::Unclip;
}

}  // namespace

RecorderCanvas::RecorderCanvas(std::int32_t width, std::int32_t height, const zu::Metrics& metrics)
    : width_(width), height_(height), metrics_(metrics) {}

std::string RecorderCanvas::Dump() const {
    std::string out;
    for (const Op& op : ops_) AppendOp(out, op);
    return out;
}

std::vector<Point> RecorderCanvas::LastPolyline() const {
    for (auto op = ops_.rbegin(); op != ops_.rend(); ++op) {
        if (op->What == Kind::Polyline) return op->Points;
    }
    return {};
}

std::vector<std::string> RecorderCanvas::TextsAt(std::int32_t y) const {
    std::vector<std::string> texts;
    for (const Op& op : ops_) {
        if (op.What == Kind::Text && op.Area.Top == y) texts.push_back(op.String);
    }
    return texts;
}

std::vector<RecorderCanvas::Op> RecorderCanvas::Between(std::int32_t top, std::int32_t bottom) const {
    std::vector<Op> found;
    for (const Op& op : ops_) {
        if (Draws(op) && TopOf(op) >= top && TopOf(op) < bottom) found.push_back(op);
    }
    return found;
}

std::int32_t RecorderCanvas::TextWidth(FontId /*font*/, std::string_view text) const {
    return static_cast<std::int32_t>(text.size()) * metrics_.Advance;
}

std::int32_t RecorderCanvas::TextHeight(FontId font) const {
    if (font == FontId::Small) return metrics_.SmallHeight;
    if (font == FontId::Large) return metrics_.LargeHeight;
    return metrics_.TextHeight;
}

void RecorderCanvas::SetPen(Rgb color) {
    ops_.push_back({.What = Kind::Pen, .Color = color});
}
void RecorderCanvas::SetTextColor(Rgb color) {
    ops_.push_back({.What = Kind::TextColor, .Color = color});
}

void RecorderCanvas::SetFont(FontId font) {
    font_ = font;
    ops_.push_back({.What = Kind::Font, .Font = font});
}

void RecorderCanvas::MoveTo(std::int32_t x, std::int32_t y) {
    ops_.push_back({.What = Kind::Move, .Area = {x, y, 0, 0}});
}

void RecorderCanvas::LineTo(std::int32_t x, std::int32_t y) {
    ops_.push_back({.What = Kind::Line, .Area = {x, y, 0, 0}});
}

void RecorderCanvas::Polyline(std::span<const Point> points) {
    ops_.push_back({.What = Kind::Polyline, .Points = {points.begin(), points.end()}});
}

void RecorderCanvas::FillRect(const zu::Rect& rect, Rgb color) {
    ops_.push_back({.What = Kind::Fill, .Color = color, .Area = rect});
}

void RecorderCanvas::TextOut(std::int32_t x, std::int32_t y, std::string_view text) {
    ops_.push_back({.What = Kind::Text, .Font = font_, .Area = {x, y, 0, 0}, .String = std::string(text)});
}

void RecorderCanvas::PushClip(const zu::Rect& rect) {
    ops_.push_back({.What = Kind::Clip, .Area = rect});
}
void RecorderCanvas::PopClip() {
    ops_.push_back({.What = Kind::Unclip});
}

}  // namespace zu
