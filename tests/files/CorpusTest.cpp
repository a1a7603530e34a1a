// The stored seeds of the fuzz targets, one by one.
#include <gtest/gtest.h>

#include "fuzz/FuzzEntries.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

/// Feeds every file of a corpus to an entry; the number of files.
template <typename Entry>
int Feed(const std::string& name, Entry entry) {
    int count = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(ZU_TEST_DATA) + "/../fuzz/corpus/" + name)) {
        const std::string bytes = test::ReadBytes(file.path());
        EXPECT_EQ(entry({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}), "")
            << file.path();
        ++count;
    }
    return count;
}

TEST(Corpus, OfSettingsReadsWell) {
    EXPECT_GE(Feed("settings", test::FuzzSettings), 20);
}

TEST(Corpus, OfDataFilesReadsWell) {
    EXPECT_GE(Feed("data", test::FuzzData), 20);
}

TEST(Corpus, OfValueChangeDumpsReadsWell) {
    EXPECT_GE(Feed("vcd", test::FuzzVcd), 15);
}

}  // namespace
}  // namespace zu
