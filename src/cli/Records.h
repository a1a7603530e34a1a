#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zu {

/// One data record of a data file as its header describes it.
struct FileRecordInfo {
    std::string
        Target;  ///< "D0".."D19" samples, "PG0".."PG19" pattern data, "IO" directions, or what stands there
    std::int32_t First = 0;  ///< address of the first byte
    std::int32_t Count = 0;  ///< bytes
    friend bool operator==(const FileRecordInfo&, const FileRecordInfo&) = default;
};

/// The records of a data file in their order, up to its end marker and at most 65536, whether or not they
/// would load. Empty for a file without records, or one that cannot be read.
std::vector<FileRecordInfo> RecordsOfFile(const std::string& path);

/// The records of each target joined where one continues the other; in order of first appearance.
std::vector<FileRecordInfo> RangesOf(const std::vector<FileRecordInfo>& records);

}  // namespace zu
