// The interface objects of one workspace as quads: listed in drawing order, then gathered into batches.
#pragma once

#include "gui/GuiObject.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Zelkor {

class GuiText;
class GuiTileArray;
class GuiWorkspace;

inline constexpr int guiItemCapacity = 1000;
inline constexpr int guiVertexCapacity = 50000; // floats
inline constexpr int guiQuadFloats = 16;        // of a quad: four corners x, y, then four u, v

struct GuiDrawItem {
    int texture = -1;     // none
    unsigned drawKey = 0; // the low byte a BlendMode; guiNoDepthTest
    float depth = 0;      // z
    Vec4 colour;
    bool filtered = true; // false: nearest texels
    int quadCount = 1;
    int pooled = -1; // index of its first float in the pool; -1: the one quad it keeps itself
    // Corners: top-left, top-right, bottom-left, bottom-right.
    float quad[guiQuadFloats] = {};
};

inline constexpr unsigned guiNoDepthTest = 0x100;

struct GuiVertex {
    float x, y, z, u, v;
    std::uint8_t colour[4];
};

// Items drawn at one go.
struct GuiBatch {
    int texture;
    unsigned drawKey;
    bool filtered;
    int firstVertex, vertexCount; // four to a quad, around it
};

// An object is drawn in pass 0 when it is opaque and can be, in pass 1 when it needs blending. With the draw
// modes 0 and 3 and a the opacity it has with its parents':
//     mode 0           pass 0 if a >= 1
//     mode 3, a >= 1   rectangles pass 0; texts and bitmaps pass 1; panels, sprites and tile arrays both
//     otherwise        pass 1
bool drawnInPass(GuiKind kind, int drawMode, float opacity, int pass);

class GuiDrawList {
  public:
    void clear();
    // Adds the visible objects below the workspace's root. Those that find the pools full are left out, and
    // texts are cut.
    void updateGuiList(GuiWorkspace& workspace, int pass);
    // Into the sorted list: with frontToBack before the first item of larger depth, else before the first of
    // smaller depth. Left out when there are guiItemCapacity already.
    void addToGuiList(const GuiDrawItem& item, bool frontToBack);

    // In drawing order.
    std::span<const int> order() const { return order_; }
    const GuiDrawItem& item(int index) const { return items_[static_cast<std::size_t>(index)]; }
    std::span<const float> quads(const GuiDrawItem& item) const;

    // Joins items of equal key, texture and filter: neighbours in the list always, and on a screen, where
    // nothing but order decides, also others when no item that lies between covers any of the same place.
    // tint: colours of blend modes above 2 are toned down to the pencil's.
    void gather(bool tint);
    std::span<const GuiBatch> batches() const { return batches_; }
    std::span<const GuiVertex> vertices() const { return vertices_; }

  private:
    struct Place; // what children inherit
    struct Box {
        float left, top, right, bottom;
    };
    struct Group {
        int first, last; // items, linked by next_
        Box box;
    };
    static bool overlap(const Box& a, const Box& b);

    void append(const GuiDrawItem& item);
    void sortAppended(bool frontToBack);
    void addChildren(const GuiChildren& children, const Place& place);
    void addObject(GuiObject& object, const Place& place);
    void addQuad(GuiObject& object, const Place& place);
    void addText(const GuiText& text, const Place& place);
    void addTiles(GuiTileArray& tiles, const Place& place);
    GuiDrawItem itemFor(const GuiObject& object, const Place& place) const;
    float* takeQuads(GuiDrawItem& item, int wanted);
    void finishQuads(GuiDrawItem& item, int used);
    bool hiddenQuad(const float* quad) const;

    Box boxOf(const GuiDrawItem& item) const;
    bool covered(const Group& group, const Box& box) const;
    int groupFor(const GuiDrawItem& item, const Box& box) const;
    void appendVertices(const GuiDrawItem& item, bool tint);

    std::vector<GuiDrawItem> items_;
    std::vector<int> order_;
    struct Appended {
        float depth;
        int index;
    };
    std::vector<Appended> appended_; // not yet in order_
    std::vector<float> pool_;
    GuiWorkspace* workspace_ = nullptr; // the one listed
    int pass_ = 0;

    std::vector<Group> groups_;
    std::vector<int> next_; // by item: the next of its group
    std::vector<Box> boxes_;
    std::vector<GuiBatch> batches_;
    std::vector<GuiVertex> vertices_;
};

} // namespace Zelkor
