#include "render/ShaderSource.h"

#include <gtest/gtest.h>

#include <map>

namespace Zelkor {

namespace {

using Files = std::map<std::string, std::string>;

ShaderSource compose(const Files& files) {
    return composeShader("main", [&files](const std::string& name) -> std::optional<std::string> {
        const auto found = files.find(name);
        if (found == files.end()) return std::nullopt;
        return found->second;
    });
}

std::string join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line;
    return text;
}

std::string repeat(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(ShaderSourceTest, SplitsStagesAtWholeKeywordLines) {
    const ShaderSource source =
        compose({{"main", "before\nVERTEX\nv1\n\n PIXEL\nGEOMETRY\ng\nPIXEL\np1\r\np2"}});
    ASSERT_FALSE(source.failed()) << source.error;
    EXPECT_EQ(join(source.vertex.lines), "before\nv1\n PIXEL\n");
    ASSERT_TRUE(source.geometry);
    EXPECT_EQ(join(source.geometry->lines), "g\n");
    EXPECT_EQ(join(source.pixel.lines), "p1\np2\n");
}

TEST(ShaderSourceTest, IncludesInPlaceAndKeywordsInsideCount) {
    const ShaderSource source = compose({{"main", "a\nINCLUDE\ncommon\nc\nINCLUDE\ntail"},
                                         {"common", "b1\nINCLUDE\ndeeper\nb3\n"},
                                         {"deeper", "b2"},
                                         {"tail", "PIXEL\np"}});
    ASSERT_FALSE(source.failed()) << source.error;
    EXPECT_EQ(join(source.vertex.lines), "a\nb1\nb2\nb3\nc\n");
    EXPECT_EQ(join(source.pixel.lines), "p\n");
}

TEST(ShaderSourceTest, RefusesBrokenFiles) {
    EXPECT_TRUE(compose({}).failed());
    EXPECT_TRUE(compose({{"main", "VERTEX\nv\n"}}).failed()) << "no PIXEL";
    EXPECT_TRUE(compose({{"main", "INCLUDE\nmissing\nPIXEL\n"}}).failed());
    EXPECT_TRUE(compose({{"main", "PIXEL\nINCLUDE"}}).failed());
    EXPECT_TRUE(compose({{"main", "PIXEL\nGEOMETRY\n"}}).failed());
    EXPECT_TRUE(compose({{"main", "INCLUDE\nmain\nPIXEL\n"}}).failed()) << "endless";
    const std::string bush = repeat("INCLUDE\nmain\n", 40);
    EXPECT_TRUE(compose({{"main", bush + "PIXEL\n"}}).failed()) << "endless and branching";
}

TEST(ShaderSourceTest, KeepsAtMost512LinesOf511Bytes) {
    EXPECT_FALSE(compose({{"main", repeat("v\n", 512) + "PIXEL\n" + repeat("p\n", 512)}}).failed());
    EXPECT_TRUE(compose({{"main", repeat("v\n", 513) + "PIXEL\n"}}).failed());
    EXPECT_TRUE(
        compose({{"main", "GEOMETRY\n" + repeat("g\n", 500) + "PIXEL\n" + repeat("p\n", 13)}}).failed());

    const ShaderSource longLines =
        compose({{"main", std::string(511, 'x') + "\n" + std::string(600, 'y') + "\nPIXEL\n"}});
    ASSERT_EQ(longLines.vertex.lines.size(), 3u);
    EXPECT_EQ(longLines.vertex.lines[0], std::string(511, 'x') + "\n");
    EXPECT_EQ(longLines.vertex.lines[1], std::string(511, 'y') + "\n");
    EXPECT_EQ(longLines.vertex.lines[2], std::string(89, 'y') + "\n");
}

TEST(ShaderSourceTest, PatchesMarkersForEachVariant) {
    const std::string shadows = "const int numShadows=0;\n", lights = "const int numLights=0;\n";
    const ShaderSource source = compose({{"main", shadows + lights + "v\nPIXEL\np\n"}});
    EXPECT_TRUE(source.usesVariants);
    const char* expected[shaderVariants] = {"02", "12", "24", "34", "46"};
    for (int v = 0; v < shaderVariants; ++v)
        EXPECT_EQ(join(variantLines(source.vertex, v)),
                  std::string("const int numShadows=") + expected[v][0] +
                      ";\nconst int numLights=" + expected[v][1] + ";\nv\n");
}

} // namespace

} // namespace Zelkor
