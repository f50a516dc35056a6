#include "check/Findings.h"

#include "io/DataFiles.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace {

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isNumber(std::string_view text, bool pointAllowed) {
    if (!text.empty() && text[0] == '-') text.remove_prefix(1);
    const auto points = std::count(text.begin(), text.end(), '.');
    const auto digits = std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return digits > 0 && points <= (pointAllowed ? 1 : 0) &&
           static_cast<std::size_t>(points + digits) == text.size();
}

} // namespace

StrictTokens::StrictTokens(std::string file, Findings& findings)
    : file_(std::move(file)), findings_(findings) {
    const auto bytes = Zelkor::readDataFile(file_);
    if (!bytes) {
        report(0, "cannot be read");
        return;
    }
    text_.assign(bytes->begin(), bytes->end());
    int line = 1;
    for (std::size_t i = 0; i < text_.size();) {
        if (isBlank(text_[i])) {
            line += text_[i++] == '\n';
            continue;
        }
        std::size_t end = i;
        while (end < text_.size() && !isBlank(text_[end]))
            ++end;
        tokens_.push_back({std::string_view(text_).substr(i, end - i), line});
        i = end;
    }
}

int StrictTokens::line() const {
    return atEnd() ? lastLine_ : tokens_[next_].line;
}

std::string StrictTokens::word() {
    if (atEnd()) return {};
    lastLine_ = tokens_[next_].line;
    return std::string(tokens_[next_++].text);
}

float StrictTokens::number(const char* what) {
    const std::string text = word();
    if (!isNumber(text, true)) report(std::string(what) + " is no number: '" + text + "'");
    return std::strtof(text.c_str(), nullptr);
}

int StrictTokens::integer(const char* what) {
    const std::string text = word();
    if (!isNumber(text, false)) report(std::string(what) + " is no integer: '" + text + "'");
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

void StrictTokens::label(const char* expected) {
    const std::string text = word();
    if (text != expected) report("expected '" + std::string(expected) + "', found '" + text + "'");
}

void StrictTokens::report(int line, const std::string& reason) {
    findings_.push_back({file_, line, reason});
}

bool meshExists(const std::string& name) {
    return Zelkor::dataFileExists("units/" + name + ".mesh");
}

bool textureExists(const std::string& name) {
    return Zelkor::dataFileExists("textures/" + name + ".tga");
}

bool shaderExists(const std::string& name) {
    const char* folders[] = {"shaders/", "shaders/post/", "shaders/direct/"};
    return std::any_of(std::begin(folders), std::end(folders),
                       [&](const char* folder) { return Zelkor::dataFileExists(folder + name + ".shader"); });
}
