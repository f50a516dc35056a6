// An open file of letter outlines.
#pragma once

#include "mesh/Outline.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <string>
#include <vector>

namespace forge {

// Texts write a space as '_'.
inline constexpr char spaceLetter = '_';

class FontFile {
  public:
    // Throws std::runtime_error when the file cannot be read.
    explicit FontFile(const std::string& file);
    ~FontFile();
    FontFile(const FontFile&) = delete;

    // flags: FT_LOAD_*. Throws std::runtime_error when the file lacks the letter.
    FT_GlyphSlot load(char letter, FT_Int32 flags);
    FT_Face face() const { return face_; }

  private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

// A line of text as closed outlines, those of holes among them. It stands on y = 0 and is centred about x = 0;
// `height` is that of its capital H, `spacing` what is added between letters. Throws as FontFile does.
std::vector<Outline> textOutlines(FontFile& font, const std::string& text, float height, float spacing);

} // namespace forge
