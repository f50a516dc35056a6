#include "check/CheckSounds.h"

#include "audio/AudioManager.h"
#include "audio/OggStream.h"
#include "audio/WavFile.h"
#include "io/DataFiles.h"

namespace {

// "hit_3" for the third variant of "hit"; a name that ends in another number is a sound of its own.
std::string baseOfVariant(const std::string& name) {
    const std::size_t length = name.size();
    if (length < 3 || name[length - 2] != '_') return "";
    const char number = name[length - 1];
    return number >= '2' && number <= '0' + Zelkor::SoundEntry::maxVariants ? name.substr(0, length - 2) : "";
}

} // namespace

void checkWavFile(const std::string& file, Findings& findings) {
    Zelkor::WavError error = Zelkor::WavError::unreadable;
    const auto bytes = Zelkor::readDataFile(file);
    if (!bytes || !Zelkor::readWav(*bytes, error)) findings.push_back({file, 0, Zelkor::wavErrorText(error)});
    const std::string base = baseOfVariant(file.substr(0, file.rfind('.')));
    if (!base.empty() && !Zelkor::dataFileExists(base + ".wav"))
        findings.push_back({file, 0, "a variant of " + base + ".wav, which is missing"});
}

void checkOggFile(const std::string& file, Findings& findings) {
    const std::string problem = Zelkor::oggProblem(file);
    if (!problem.empty()) findings.push_back({file, 0, problem});
}
