// Pixel stage of fixed things, up to main().
// Added to the darkest and the lightest tone.
uniform float toneLow;
uniform float toneHigh;
// Degrees by which strokes on fronts rise to the right.
uniform float strokeAngle;
// 1 for wood and whatever else has a grain: strokes follow the texture's u, a little askew from thing to thing.
uniform float grain;
varying float light;
varying float remote;
varying vec3 place;
varying vec2 grained;
varying vec2 chance;
varying vec3 facing;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
// The point on the hatch texture of the face seen: tops lie flat, sides stand steep against the fronts' slant.
vec2 facePlace()
{
    if (grain > 0.5) return strokesAt(grained, 9.0 * (chance.x - 0.5) + (facing.y > 0.8 ? 14.0 : 4.0));
    // A slight preference for the front, so that rounded things keep one direction over most of their face.
    // The view looks almost level: what is seen of a top or a side is foreshortened, its strokes are not.
    vec3 seen = facing * vec3(0.8, 0.8, 1.0);
    if (seen.z >= seen.x && seen.z >= seen.y) return strokesAt(place.xy, strokeAngle);
    if (seen.y >= seen.x) return strokesAt(vec2(place.x, place.y + place.z * 0.25), 9.0);
    return strokesAt(vec2(place.x + place.z * 0.3, place.y), -68.0);
}
// The shading of a fixed thing: low and high are its darkest and lightest tone, weight how dark a stroke is.
vec3 fixedColour(float low, float high, float swing, float weight)
{
    float behind = max(remote, 0.0);
    float before = max(-remote, 0.0);
    vec2 drawn = facePlace();
    float tone = mix(low + toneLow, high + toneHigh, light) - 0.25 * before;
    tone = mix(tone, 1.0, 0.35 * behind);
    // What does not move keeps most of its strokes: each redraw goes over them a hair aside, adds some and leaves out
    // others. Whole screens of strokes that jump tire the eye.
    float spread = swing * drift(drawn) + 0.08 * drift(drawn * 2.3 + redrawJump() * 5.0);
    vec3 colour = shaded(drawn + redrawJump() * 0.004, tone, spread, weight * (1.0 - 0.55 * behind) + 0.2 * before);
    return mix(mix(colour, graphite, 0.3 * before), paperColour, 0.42 * behind);
}
