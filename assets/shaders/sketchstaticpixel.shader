// Pixel stage of fixed things, up to main(): the point on the hatch texture of the face seen.
varying float light;
varying vec3 place;
varying vec3 facing;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
vec2 facePlace()
{
    // A slight preference for the front, so that rounded things keep one direction over most of their face.
    // The view looks almost level: what is seen of a top or a side is foreshortened, its strokes are not.
    vec3 seen = facing * vec3(0.8, 0.8, 1.0);
    if (seen.z >= seen.x && seen.z >= seen.y) return place.xy;
    if (seen.y >= seen.x) return vec2(place.x, place.y + place.z * 0.25);
    return vec2(place.x + place.z * 0.3, place.y);
}
