// Vertex stage of figures: strokes live in the texture coordinates, which on limbs are the rest pose, so they bend
// and turn with what they are drawn on.
uniform float scale;
// Degrees by which strokes rise to the right.
uniform float strokeAngle;
varying float light;
varying vec2 place;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    vec3 point = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vec3 normal = normalize(gl_NormalMatrix * gl_Normal);
    light = sunlight(normal, point);
    // scale is 1 / the unit's scale; figures are drawn with finer strokes than the ground they stand on. Towards the
    // sides of a form they curve round it, by a fifth of a unit.
    vec2 rest = gl_MultiTexCoord0.xy + 0.2 * vec2(normal.y, -normal.x) * max(normal.z, 0.0);
    place = strokesAt(rest * (1.9 / (hatchSpan * max(scale, 0.01))), strokeAngle);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
