VERTEX
#version 120
// Things drawn flat, such as signs and boards: one tone all over, strokes in the texture coordinates. Runs of
// tiles that were merged into one repeat their strokes instead of stretching them.
uniform float scaleX;
uniform float scaleY;
uniform float scale;
// Degrees by which strokes rise to the right.
uniform float strokeAngle;
varying float remote;
varying vec2 place;
INCLUDE
sketchcommon
INCLUDE
sketchdepth
void main()
{
    // 0 where the material has no such parameter.
    vec2 repeat = vec2(scaleX > 0.0 ? scaleX : 1.0, scaleY > 0.0 ? scaleY : 1.0);
    place = strokesAt(gl_MultiTexCoord0.xy * repeat * (1.4 / (hatchSpan * max(scale, 0.01))), strokeAngle);
    remote = max(remoteness((gl_ModelViewMatrix * gl_Vertex).xyz), 0.0);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
// Added to the tone.
uniform float toneHigh;
varying vec2 place;
varying float remote;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    vec3 drawn = pencil(place, 0.86 + toneHigh, 0.1 * drift(place), 0.72 * (1.0 - 0.4 * remote));
    gl_FragColor = vec4(mix(drawn, paperColour, 0.4 * remote), surfaceMark);
}
