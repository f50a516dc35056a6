#include "render/ShaderSource.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Zelkor {

namespace {

constexpr std::size_t maxLineLength = 511; // longer lines are read as several
constexpr std::size_t maxKeptLines = 512;  // of the vertex stage, and of the other two together
// A file that includes itself would never end.
constexpr std::size_t maxIncludeDepth = 16;
constexpr std::size_t maxOpenedFiles = 256;

constexpr std::string_view shadowMarker = "const int numShadows=0;\n";
constexpr std::string_view lightMarker = "const int numLights=0;\n";
constexpr std::string_view shadowDigits = "01234";
constexpr std::string_view lightDigits = "22446";

// Hands out the lines of a text without their line feeds.
class LineReader {
  public:
    explicit LineReader(std::string_view text) : left_(text) {}

    bool next(std::string& line) {
        if (left_.empty()) return false;
        std::size_t end = left_.substr(0, maxLineLength).find('\n');
        const bool ended = end != std::string_view::npos;
        if (!ended) end = std::min(left_.size(), maxLineLength);
        line = left_.substr(0, end);
        left_.remove_prefix(ended ? end + 1 : end);
        // Text mode: a carriage return belongs to the line end.
        if (ended && !line.empty() && line.back() == '\r') line.pop_back();
        return true;
    }

  private:
    std::string_view left_;
};

class Composer {
  public:
    explicit Composer(const ShaderFileReader& read) : read_(read) {}

    ShaderSource compose(const std::string& name) {
        file(name, 0);
        if (!source_.failed() && section_ != Section::pixel) fail("no PIXEL section");
        // The pixel stage varies with markers of the geometry stage too: what counts is whether one was seen
        // since the vertex stage ended.
        source_.pixel.varies = markerAfterVertex_;
        source_.usesVariants = markerSeen_;
        return std::move(source_);
    }

  private:
    enum class Section { vertex, geometry, pixel };

    void fail(const std::string& why) {
        if (!source_.failed()) source_.error = why;
    }

    void file(const std::string& name, std::size_t depth) {
        if (depth > maxIncludeDepth || source_.openedFiles.size() >= maxOpenedFiles)
            return fail("too many INCLUDEs at \"" + name + "\"");
        const auto text = read_(name);
        if (!text) return fail("no shader file \"" + name + "\"");
        source_.openedFiles.push_back(name);
        LineReader reader(*text);
        std::string line;
        while (!source_.failed() && reader.next(line)) {
            if (line == "INCLUDE") {
                if (!reader.next(line)) return fail("INCLUDE without a name");
                file(line, depth + 1);
            } else if (!keyword(line) && !line.empty()) {
                keep(line);
            }
        }
    }

    bool keyword(const std::string& line) {
        if (line == "VERTEX") return true;
        if (line == "GEOMETRY") {
            if (section_ != Section::vertex) fail("GEOMETRY after another section");
            section_ = Section::geometry;
            source_.geometry.emplace();
            source_.geometry->varies = markerSeen_;
            return true;
        }
        if (line == "PIXEL") {
            if (section_ == Section::pixel) fail("two PIXEL sections");
            section_ = Section::pixel;
            return true;
        }
        return false;
    }

    ShaderStage& stage() {
        if (section_ == Section::vertex) return source_.vertex;
        return section_ == Section::geometry ? *source_.geometry : source_.pixel;
    }

    void keep(const std::string& text) {
        const std::size_t others =
            section_ == Section::pixel && source_.geometry ? source_.geometry->lines.size() : 0;
        if (stage().lines.size() + others >= maxKeptLines) return fail("too many lines");
        const std::string& line = stage().lines.emplace_back(text + '\n');
        if (line != shadowMarker && line != lightMarker) return;
        markerSeen_ = true;
        if (section_ == Section::vertex)
            source_.vertex.varies = true;
        else
            markerAfterVertex_ = true;
        if (section_ == Section::geometry) source_.geometry->varies = true;
    }

    const ShaderFileReader& read_;
    ShaderSource source_;
    Section section_ = Section::vertex;
    bool markerSeen_ = false;
    bool markerAfterVertex_ = false;
};

} // namespace

ShaderSource composeShader(const std::string& name, const ShaderFileReader& read) {
    return Composer(read).compose(name);
}

std::vector<std::string> variantLines(const ShaderStage& stage, int variant) {
    std::vector<std::string> lines = stage.lines;
    const auto place = static_cast<std::size_t>(variant);
    for (std::string& line : lines) {
        const std::size_t digit = line.find('0');
        if (line == shadowMarker)
            line[digit] = shadowDigits[place];
        else if (line == lightMarker)
            line[digit] = lightDigits[place];
    }
    return lines;
}

} // namespace Zelkor
