// Pixel stage of figures, up to main().
// Added to the darkest and the lightest tone of the range, for things paler or darker than most.
uniform float toneLow;
uniform float toneHigh;
varying float light;
varying vec2 place;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
vec3 figureColour()
{
    float tone = mix(0.08 + toneLow, 0.98 + toneHigh, light);
    return pencil(place, tone, 0.05 * drift(place), 0.9);
}
