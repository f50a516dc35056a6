#include "write/OutputFile.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace forge {

void writeFile(const std::string& path, const Bytes& bytes) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) std::filesystem::create_directories(folder);
    const std::string beside = path + ".new";
    {
        std::ofstream out(beside, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) throw std::runtime_error("cannot write " + beside);
    }
    std::filesystem::rename(beside, path);
}

Bytes readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeDepfile(const std::string& path, const std::string& output,
                  const std::vector<std::string>& inputs) {
    std::string text;
    const auto escaped = [&](const std::string& name) {
        for (const char c : name) {
            if (c == ' ') text += '\\';
            text += c;
        }
    };
    escaped(output);
    text += ':';
    for (const std::string& input : inputs) {
        text += " \\\n  ";
        escaped(input);
    }
    text += '\n';
    writeFile(path, Bytes(text.begin(), text.end()));
}

} // namespace forge
