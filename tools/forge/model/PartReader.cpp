#include "model/PartReader.h"

namespace forge::partreader {

using Zelkor::Vec2;
using Zelkor::Vec3;

Mapping readMapping(const Arguments& args, const Mapping& fallback) {
    Mapping mapping = fallback;
    if (args.has("map")) {
        using Projection = Mapping::Projection;
        const std::string name = args.name("map");
        if (name == "front")
            mapping.projection = Projection::Front;
        else if (name == "side")
            mapping.projection = Projection::Side;
        else if (name == "top")
            mapping.projection = Projection::Top;
        else if (name == "box")
            mapping.projection = Projection::Box;
        else if (name == "local")
            mapping.projection = Projection::Local;
        else
            args.fail("map", "map is front, side, top, box or local");
    }
    mapping.offset = args.pair("uv", mapping.offset);
    mapping.turn = args.number("uvturn", mapping.turn);
    mapping.scale = args.pair("uvscale", mapping.scale);
    return mapping;
}

std::vector<int> readBones(const Arguments& args, const Placement& placement, const Model& model,
                           const std::vector<int>& fallback) {
    if (model.rig.joints.empty() || !args.has("bone")) return fallback;
    std::vector<int> bones;
    for (std::string name : args.names("bone")) {
        if (placement.otherSide) name = otherSide(name);
        const int joint = model.rig.find(name);
        if (joint < 0) args.fail("bone", "the rig has no joint '" + name + "'");
        bones.push_back(joint);
    }
    return bones;
}

WarpChain ownPlace(const Arguments& args, const Placement& placement) {
    WarpChain warps = placement.warps;
    if (args.has("at")) warps.push_back(moveWarp(args.vec3("at")));
    if (args.has("turn")) {
        const bool plane = args.value("turn").tuple.size() == 1;
        warps.push_back(turnWarp(plane ? Vec3{0, 0, args.number("turn")} : args.vec3("turn")));
    }
    return warps;
}

Part readHead(const Arguments& args, const Statement& statement, const Placement& placement,
              const Model& model) {
    Part part;
    part.place = statement.place;
    part.name = args.name("name");
    if (placement.otherSide) part.name = otherSide(part.name);
    part.material = args.name("material");
    part.mapping = readMapping(args, {});
    part.soft = args.number("soft", 1);
    part.influences = args.integer("influences", 2);
    if (part.influences < 1 || part.influences > 4) args.fail("influences", "influences is 1 to 4");
    if (!model.rig.joints.empty() && !args.has("bone"))
        throw SourceError(statement.place,
                          statement.keyword + " " + part.name + " needs bone=, for the model has a rig");
    return part;
}

} // namespace forge::partreader
