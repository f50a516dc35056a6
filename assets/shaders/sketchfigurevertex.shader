// Vertex stage of figures: strokes live in the texture coordinates, which on limbs are the rest pose, so they bend and turn
// with what they are drawn on.
uniform float scale;
varying float light;
varying vec2 place;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    vec3 point = (gl_ModelViewMatrix * gl_Vertex).xyz;
    light = sunlight(normalize(gl_NormalMatrix * gl_Normal), point);
    // scale is 1 / the unit's scale; figures are drawn with finer strokes than the ground they stand on.
    place = gl_MultiTexCoord0.xy * (1.9 / (hatchSpan * max(scale, 0.01)));
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
