// An open file of letter outlines.
#pragma once

#include "mesh/Outline.h"

#include <string>
#include <vector>

struct FT_LibraryRec_;
struct FT_FaceRec_;
struct FT_GlyphSlotRec_;

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
    FT_GlyphSlotRec_* load(char letter, int flags);
    FT_FaceRec_* face() const { return face_; }

  private:
    FT_LibraryRec_* library_ = nullptr;
    FT_FaceRec_* face_ = nullptr;
};

// A line of text as closed outlines, those of holes among them. It stands on y = 0 and is centred about x = 0;
// `height` is that of its capital H, `spacing` what is added between letters. Throws as FontFile does.
std::vector<Outline> textOutlines(FontFile& font, const std::string& text, float height, float spacing);

} // namespace forge
