#include "FuzzTarget.h"

#include "audio/OggStream.h"

#include <vector>

using namespace Zelkor;

// As the player reads: in pieces of an odd size, to the end and once more from the start.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    OggStream stream;
    std::FILE* file = size > 0 ? fmemopen(const_cast<uint8_t*>(data), size, "rb") : nullptr;
    fuzzCheck(stream.open(file) == stream.isOpen());
    if (!stream.isOpen()) return 0;
    std::vector<char> piece(50'002);
    for (int round = 0; round < 2; ++round) {
        for (int pieces = 0; pieces < 200; ++pieces) {
            const std::size_t got = stream.read(piece.data(), piece.size());
            fuzzCheck(got <= piece.size());
            if (got < piece.size()) break;
        }
        if (!stream.rewind()) break;
    }
    return 0;
}
