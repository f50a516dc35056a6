// Contact sheets, drawn off-screen from a data folder of one model.
#include "MenuView.h"
#include "Sheet.h"

#include "model/Finish.h"
#include "model/ModelReader.h"
#include "sdl/SdlPlatform.h"
#include "write/MeshFile.h"
#include "write/OutputFile.h"

#include <gtest/gtest.h>
#include <png.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace {

constexpr int cell = 60, moments = 3, label = 16;

struct Picture {
    int width = 0, height = 0;
    std::vector<png_byte> grey;
};

Picture readPng(const std::string& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.c_str())) return {};
    image.format = PNG_FORMAT_GRAY;
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    picture.grey.resize(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, picture.grey.data(), 0, nullptr);
    return picture;
}

class SheetTest : public testing::Test {
  protected:
    void SetUp() override {
        // Tests run side by side, each in its own process.
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::path(testing::TempDir()) / (std::string("rustpike-sheet-") + test->name());
        std::filesystem::create_directories(folder_ / "units");
        std::ofstream(folder_ / "block.model") << "solid block stone {\n    box size=4,8,2\n}\n";
        const forge::Model model = forge::readModel((folder_ / "block.model").string()).model;
        forge::writeFile((folder_ / "units" / "block.mesh").string(),
                         forge::encodeMesh(forge::finishMesh(model)));
        platform::setCurrent(&system_);
        options_ = {.units = {"block"},
                    .moments = moments,
                    .size = cell,
                    .silhouette = true,
                    .file = (folder_ / "sheet.png").string()};
    }
    void TearDown() override {
        platform::setCurrent(nullptr);
        std::filesystem::remove_all(folder_);
    }

    platform::SdlPlatform system_{{.headless = true}};
    std::filesystem::path folder_;
    viewer::SheetOptions options_;
};

// A block turned by thirds of a circle: narrow, seen cornerwise, and never filling its cell.
TEST_F(SheetTest, EveryCellHoldsTheUnitInBlackOnPaper) {
    viewer::Studio studio;
    ASSERT_TRUE(studio.open(folder_.string(), viewer::sheetLines, viewer::sheetLines));
    ASSERT_TRUE(viewer::writeSheet(studio, options_));
    const Picture sheet = readPng(options_.file);
    ASSERT_EQ(sheet.width, cell * moments);
    ASSERT_EQ(sheet.height, cell + label);
    for (int column = 0; column < moments; ++column) {
        int black = 0, paper = 0;
        for (int y = label; y < sheet.height; ++y)
            for (int x = column * cell; x < (column + 1) * cell; ++x) {
                const png_byte grey = sheet.grey[static_cast<std::size_t>(y * sheet.width + x)];
                black += grey < 10;
                paper += grey > 200;
            }
        // Fitted into the cell a unit is 7.1 pixels: the block covers about 1,650, less than half of it.
        EXPECT_GT(black, 1350) << column;
        EXPECT_LT(black, 2000) << column;
        EXPECT_GT(paper, 1500) << column;
    }
}

// 720 lines show 100 units, the middle of the picture is (0, 50): the block, 4 by 8, is seen where it was moved to.
TEST_F(SheetTest, MenusShowUnitsWhereTheyAreMoved) {
    viewer::Studio studio;
    ASSERT_TRUE(studio.open(folder_.string(), 640, 360));
    EXPECT_FALSE(viewer::writeMenuView(studio, {{"no such unit@1,2"}, 0, options_.file}));
    ASSERT_TRUE(viewer::writeMenuView(studio, {{"block@-50,80", "block@40,20"}, 0, options_.file}));
    const Picture view = readPng(options_.file);
    ASSERT_EQ(view.width, 640);
    const auto greyAt = [&](float x, float y) {
        const int column = 320 + static_cast<int>(x * 3.6f), row = 180 - static_cast<int>((y - 50) * 3.6f);
        return static_cast<int>(view.grey[static_cast<std::size_t>(row * view.width + column)]);
    };
    const int paper = greyAt(0, 50);
    for (const auto& [x, y] : {std::pair{-50.0f, 80.0f}, {40.0f, 20.0f}}) {
        EXPECT_LT(greyAt(x, y + 3), paper) << x;
        EXPECT_EQ(greyAt(x, y + 8), paper) << x;
        EXPECT_EQ(greyAt(x + 6, y), paper) << x;
    }
}

TEST_F(SheetTest, AnUnknownUnitIsRefused) {
    viewer::Studio studio;
    ASSERT_TRUE(studio.open(folder_.string(), viewer::sheetLines, viewer::sheetLines));
    options_.units = {"no such unit"};
    EXPECT_FALSE(viewer::writeSheet(studio, options_));
    EXPECT_FALSE(std::filesystem::exists(options_.file));
}

} // namespace
