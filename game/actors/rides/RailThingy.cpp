#include "actors/rides/RailThingy.h"

#include "actors/ThingyManager.h"
#include "game/Game.h"
#include "game/Session.h"
#include "render/MaterialManager.h"
#include "resources/Scene.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::rail, createActor<RailThingy>};

constexpr float halfBase = 5; // the rails under a cart are read this far to both sides

struct RailPiece {
    const char* unit;
    float length;
};
// The longest that fits comes first.
constexpr RailPiece pieces[] = {{"tiles/cave/mcrail8", 80},
                                {"tiles/cave/mcrail4", 40},
                                {"tiles/cave/mcrail2", 20},
                                {"tiles/cave/mcrail05", 5}};
constexpr float shortestLength = pieces[3].length;

} // namespace

RailThingy::RailThingy(Unit& ownUnit) : Thingy(ownUnit, GROUP_RAILS) {
    ownUnit.visible = false;
}

RailThingy::~RailThingy() {
    removePieces();
}

void RailThingy::removePieces() {
    Session* session = Game::get().session.get();
    for (Unit* piece : pieces_)
        if (session) session->scene.removeUnit(piece);
    pieces_.clear();
}

void RailThingy::setWaypoints(std::vector<Vec3> points) {
    points_ = std::move(points);
    std::stable_sort(points_.begin(), points_.end(), [](const Vec3& a, const Vec3& b) { return a.x < b.x; });
    removePieces();
    layPieces();
}

// Pieces are as long along x as they are level; the program that draws them leans them by their tilt.
void RailThingy::layPieces() {
    Session* session = Game::get().session.get();
    if (!session) return;
    for (std::size_t i = 1; i < points_.size(); ++i) {
        const Vec3 &from = points_[i - 1], &to = points_[i];
        const float width = to.x - from.x;
        if (width <= 0) continue;
        const float slope = (to.y - from.y) / width;
        for (float laid = 0; width - laid > shortestLength / 2;) {
            const RailPiece* piece = std::begin(pieces);
            while (piece->length > width - laid && piece->length > shortestLength)
                ++piece;
            Unit* laidPiece = session->scene.createUnit(piece->unit, from + Vec3{laid, laid * slope, 0});
            for (RenderItem& item : laidPiece->items)
                MaterialManager::setShaderParam(item.ownMaterial(), "tilt", slope);
            pieces_.push_back(laidPiece);
            laid += piece->length;
        }
    }
}

float RailThingy::heightAt(float x) const {
    if (x <= points_.front().x) return points_.front().y;
    for (std::size_t i = 1; i < points_.size(); ++i) {
        const Vec3 &from = points_[i - 1], &to = points_[i];
        if (x > to.x) continue;
        return from.y + (to.y - from.y) * (x - from.x) / (to.x - from.x);
    }
    return points_.back().y;
}

std::optional<RailPlace> RailThingy::at(const Vec3& point) const {
    if (points_.empty()) return std::nullopt;
    const auto [lowest, highest] = std::minmax_element(
        points_.begin(), points_.end(), [](const Vec3& a, const Vec3& b) { return a.y < b.y; });
    if (point.x < points_.front().x - halfBase || point.x > points_.back().x + halfBase ||
        point.y < lowest->y - halfBase || point.y > highest->y + halfBase)
        return std::nullopt;
    const float left = heightAt(point.x - halfBase), right = heightAt(point.x + halfBase);
    return RailPlace{(left + right) / 2, std::atan2(right - left, 2 * halfBase)};
}

std::optional<RailPlace> RailThingy::find(const ThingyManager& actors, const Vec3& point) {
    std::vector<Thingy*> tracks;
    actors.collectAll(GROUP_RAILS, tracks);
    std::optional<RailPlace> nearest;
    for (const Thingy* actor : tracks) {
        const auto* track = dynamic_cast<const RailThingy*>(actor);
        const auto place = track ? track->at(point) : std::nullopt;
        if (place && (!nearest || absolute(place->height - point.y) < absolute(nearest->height - point.y)))
            nearest = place;
    }
    return nearest;
}
