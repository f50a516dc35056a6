VERTEX
#version 120
// Flat things far away, clouds and ridges: a few broad strokes on a colour that is almost paper. Runs of
// tiles that were merged into one repeat their strokes instead of stretching them.
uniform float scaleX;
uniform float scaleY;
uniform float scale;
// Degrees by which strokes rise to the right.
uniform float strokeAngle;
varying vec2 place;
INCLUDE
sketchcommon
void main()
{
    // 0 where the material has no such parameter.
    vec2 repeat = vec2(scaleX > 0.0 ? scaleX : 1.0, scaleY > 0.0 ? scaleY : 1.0);
    place = strokesAt(gl_MultiTexCoord0.xy * repeat * (0.7 / (hatchSpan * max(scale, 0.01))), strokeAngle);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
// Added to the tone.
uniform float toneHigh;
varying vec2 place;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    float tone = 0.93 + toneHigh;
    gl_FragColor = vec4(mix(pencil(place, tone, 0.05 * drift(place), 0.5), paperColour, 0.3), surfaceMark);
}
