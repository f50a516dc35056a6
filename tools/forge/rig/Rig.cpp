#include "rig/Rig.h"

namespace forge {

int Rig::find(const std::string& name) const {
    for (std::size_t i = 0; i < joints.size(); ++i)
        if (joints[i].name == name) return static_cast<int>(i);
    return -1;
}

std::vector<BoneSegment> Rig::segments() const {
    std::vector<BoneSegment> result;
    for (const Joint& joint : joints)
        result.push_back({joint.position, joint.tail});
    return result;
}

std::string otherSide(const std::string& name) {
    const std::size_t n = name.size();
    if (n > 2 && name[n - 2] == '.' && name[n - 1] == 'r') return name.substr(0, n - 1) + 'l';
    if (n > 2 && name[n - 2] == '.' && name[n - 1] == 'l') return name.substr(0, n - 1) + 'r';
    return name;
}

std::string otherSideOfPath(std::string name) {
    const auto divides = [&](std::size_t i) { return i >= name.size() || name[i] == '_' || name[i] == '|'; };
    for (std::size_t i = 0; i < name.size(); ++i)
        if ((name[i] == 'R' || name[i] == 'L') && (i == 0 || divides(i - 1)) && divides(i + 1) &&
            name.size() > 1)
            name[i] = name[i] == 'R' ? 'L' : 'R';
    return otherSide(name);
}

} // namespace forge
