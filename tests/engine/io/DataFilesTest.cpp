#include "io/DataFiles.h"
#include "io/ByteReader.h"
#include "io/TokenReader.h"

#include "support/TempData.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Zelkor;

class DataFiles : public ::testing::Test {
  protected:
    DataFiles() {
        folder.write("data/units/tiles/box.txt", "one 2");
        folder.write("secret.txt", "secret");
        setDataFolder(folder.folder() / "data");
    }

    TempData folder;
};

TEST_F(DataFiles, BothSlashesReachFilesBelowTheFolder) {
    for (const char* name : {"units/tiles/box.txt", "units\\tiles\\box.txt", "units//tiles/./box.txt"}) {
        const auto tokens = openDataTokens(name);
        ASSERT_TRUE(tokens) << name;
        EXPECT_EQ(tokens->readWord(), "one");
        EXPECT_EQ(tokens->readInt(), 2);
    }
}

TEST_F(DataFiles, NothingOutsideTheFolderAndNoFolderIsOpened) {
    const std::string absolute = (folder.folder() / "secret.txt").string();
    for (const std::string& name :
         {std::string("../secret.txt"), std::string("units\\..\\..\\secret.txt"), absolute, "\\" + absolute,
          std::string("c:secret.txt"), std::string("units/.../box"),
          std::string("units/tiles/box.txt\0x", 21), std::string()})
        EXPECT_FALSE(dataPath(name)) << name;
    EXPECT_TRUE(dataPath("units/a..b/..c"));
    EXPECT_FALSE(openDataFile("units/tiles"));
    EXPECT_FALSE(readDataFile("units/missing"));
}

TEST(ByteReader, CountsThatDoNotFitAllocateNothing) {
    for (const int32_t hostile : {-1, 3, std::numeric_limits<int32_t>::max(), INT32_MIN}) {
        std::vector<uint8_t> bytes(4 + 8);
        std::memcpy(bytes.data(), &hostile, 4);
        ByteReader counted(bytes);
        EXPECT_EQ(counted.count(4), 0) << hostile;
        EXPECT_TRUE(counted.failed());
    }
    const std::vector<uint8_t> cutString = {3, 0, 0, 0, 'a', 'b'};
    EXPECT_EQ(ByteReader(cutString).string(), "");
    const std::vector<uint8_t> bytes(8);
    for (const std::size_t hostile : {std::size_t(3), std::numeric_limits<std::size_t>::max() / 4 + 2}) {
        ByteReader reader(bytes);
        EXPECT_EQ(reader.floats(hostile).capacity(), 0u);
        EXPECT_TRUE(reader.failed());
    }
    EXPECT_EQ(ByteReader(bytes).ints(2).size(), 2u);
}

} // namespace
