#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zu::test {

// Each entry feeds bytes to a reader and answers what is wrong with the result; empty if all is well. The
// fuzz targets call them with bytes of their own making, ordinary tests with the stored corpus.

/// A settings text: every value stays in its bounds, and a plain line by line look-up finds the same keys.
std::string FuzzSettings(std::span<const std::uint8_t> bytes);
/// A data file: the buffers, messages and memory modes are those of the plainest reader.
std::string FuzzData(std::span<const std::uint8_t> bytes);
/// A value change dump: channels and times stay in their bounds and order.
std::string FuzzVcd(std::span<const std::uint8_t> bytes);

}  // namespace zu::test
