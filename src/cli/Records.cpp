#include "cli/Records.h"

#include <algorithm>
#include <map>

#include "files/Decimal.h"
#include "files/RecordScanner.h"

namespace zu {
namespace {

/// Several times what the largest memory gives. A file with more is no measurement.
constexpr std::size_t kMostRecords = 65536;

/// Whether a record begins where a range ends.
bool Continues(const FileRecordInfo& range, const FileRecordInfo& record) {
    const std::int64_t end = std::int64_t{range.First} + range.Count;
    return range.Count >= 0 && record.Count >= 0 && end == record.First &&
           range.Count <= INT32_MAX - record.Count;
}

}  // namespace

std::vector<FileRecordInfo> RecordsOfFile(const std::string& path) {
    std::vector<FileRecordInfo> records;
    const auto file = ReadableFile::Open(path);
    if (!file) return records;
    ByteSource source(*file);
    while (records.size() < kMostRecords && source.TakeUntil('[')) {
        const auto keyword = TakeKeyword(source);
        if (!keyword || keyword->Word == "SETTINGS") break;
        if (keyword->Word == "COMMENT" && keyword->EndedByBlank) SkipComment(source);
        if (keyword->Word == "MODEL" && !(keyword->EndedByBlank && TakeWords(source, HeaderEnd::Text))) break;
        if (keyword->Word != "DATA" || !keyword->EndedByBlank) continue;
        const auto words = TakeWords(source, HeaderEnd::Payload);
        if (!words) break;
        records.push_back({std::string((*words)[1].View()), ParseDecimalClamped((*words)[2].View()),
                           ParseDecimalClamped((*words)[3].View())});
        source.Skip(std::max(records.back().Count, 0));
    }
    return records;
}

std::vector<FileRecordInfo> RangesOf(const std::vector<FileRecordInfo>& records) {
    std::vector<FileRecordInfo> ranges;
    std::map<std::string, std::size_t> last;  // of each target, the range that it filled last
    for (const FileRecordInfo& record : records) {
        const auto known = last.find(record.Target);
        if (known != last.end() && Continues(ranges[known->second], record)) {
            ranges[known->second].Count += record.Count;
        } else {
            last[record.Target] = ranges.size();
            ranges.push_back(record);
        }
    }
    return ranges;
}

}  // namespace zu
