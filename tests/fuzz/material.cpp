#include "FuzzTarget.h"

#include "render/MaterialReader.h"

#include <list>

using namespace Zelkor;

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    TokenReader reader = tokensOf(data, size);
    std::list<Material> made;
    const MaterialResources resources{[](const std::string&, TextureKind) { return 1; },
                                      [](const std::string&) { return -1; }};
    readMaterials(reader, resources, [&made](const std::string& name) -> Material& {
        made.emplace_back().name = name;
        return made.back();
    });
    fuzzCheck(made.size() <= size);
    return 0;
}
