// A unit: one drawable instance of a mesh, with its place in the world, its pose and its materials.
#pragma once

#include "math/Math.h"
#include "resources/Mesh.h"

#include <list>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

class Scene;
class SkeletonInstance;
class Unit;
struct GameTimer;
struct Material;

// One submesh with the material that draws it.
class RenderItem {
  public:
    RenderItem(const Submesh& drawn, Material* material) : submesh(&drawn), material_(material) {}
    ~RenderItem();
    RenderItem(RenderItem&&) noexcept;
    RenderItem& operator=(RenderItem&&) = delete;

    const Material& material() const { return *material_; }
    // For drawing, which resolves uniform locations.
    Material& drawnMaterial() { return *material_; }
    // This item's own copy, made at the first call, so that a change stays with this one unit.
    Material& ownMaterial();
    // The ambient colour of the material: the colour the submesh is drawn in. Setting the colour it already
    // has makes no copy.
    const Vec4& colour() const;
    void setColour(const Vec4& colour);

    const Submesh* submesh;
    int joint = -1; // the joint it is attached to, -1 for none
    // Skinned positions and normals, one each a vertex of the mesh, valid for the vertices that the submesh's
    // indices name; empty for an unskinned item.
    std::vector<Vec3> skinnedPositions;
    std::vector<Vec3> skinnedNormals;

  private:
    Material* material_;
    bool owned_ = false;
};

class Unit {
  public:
    // Finds the materials of the mesh, so the material manager must be there; mesh must outlive the unit.
    Unit(Mesh& mesh, int id);
    ~Unit();
    Unit(const Unit&) = delete;
    Unit& operator=(const Unit&) = delete;

    const std::string& name() const { return mesh->name; }

    // Advances the animations, rebuilds the skeleton and skins, at most once for each frame number (from 0).
    void frameUpdate(int frameNumber);
    // Refreshes worldBoxMin and worldBoxMax from the transform.
    void updateWorldBox();
    // Attached units are drawn with this one, at their own transforms. The child stays the caller's.
    void attach(Unit* child) { children.push_back(child); }
    void detach(Unit* child);

    int id;
    Mesh* mesh;
    std::unique_ptr<SkeletonInstance> skeleton; // none for a rigid mesh
    std::vector<RenderItem> items;              // one a submesh that is not collision geometry

    Vec3 position;
    Quat orientation;
    Vec3 scale{1, 1, 1};
    bool visible = true;
    bool inMainList = false;    // some material has specialAlphaTest
    bool inSpecialList = false; // some material has specialAlpha
    bool castsShadows = false;
    float viewDepth = 0; // view-space z of the bounding centre, negative in front of the camera

    Vec3 boundingCentre; // mesh space
    float boundingRadius = 0;
    Vec3 worldBoxMin, worldBoxMax;

    std::vector<Unit*> children;

  private:
    void addItem(const Submesh& submesh);

    friend class Scene;
    int updatedFrame_ = -1;
    std::list<std::unique_ptr<Unit>>::iterator place_; // in the scene that owns it
};

} // namespace Zelkor
