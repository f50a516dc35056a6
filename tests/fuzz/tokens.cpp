#include "FuzzTarget.h"

#include <algorithm>

using namespace Zelkor;

// A byte for every step chooses a way of reading; the reads must come to the end.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    TokenReader reader = tokensOf(data, size);
    float number = 0;
    int32_t integer = 0;
    std::string word;
    char c = 0, buffer[8];
    for (std::size_t step = 0; !reader.atEnd(); ++step) {
        switch (size > 0 ? data[step % size] % 6 : 0) {
        case 0:
            reader.scan("%f", &number);
            break;
        case 1:
            reader.scan("%d", &integer);
            break;
        case 2:
            reader.scan("%s", &word);
            break;
        case 3:
            reader.readWord(buffer, sizeof buffer);
            break;
        case 4:
            reader.scan("%x", nullptr);
            break;
        default:
            break;
        }
        // A number may stop for ever in front of a letter; a single byte always moves on.
        reader.scan("%c", &c);
        fuzzCheck(word.size() <= TokenReader::maxWordLength);
        fuzzCheck(step <= size + 1);
    }
    fuzzCheck(reader.line() == 1 + std::count(data, data + size, '\n'));
    return 0;
}
