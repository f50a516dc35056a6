VERTEX
#version 120
// Things drawn flat, such as signs and boards: one tone all over, strokes in the texture coordinates. Runs of
// tiles that were merged into one repeat their strokes instead of stretching them.
uniform float scaleX;
uniform float scaleY;
uniform float scale;
varying vec2 place;
INCLUDE
sketchcommon
void main()
{
    // 0 where the material has no such parameter.
    vec2 repeat = vec2(scaleX > 0.0 ? scaleX : 1.0, scaleY > 0.0 ? scaleY : 1.0);
    place = gl_MultiTexCoord0.xy * repeat * (1.4 / (hatchSpan * max(scale, 0.01)));
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
    gl_FragColor = vec4(pencil(place, 0.86 + toneHigh, 0.1 * drift(place), 0.72), 1.0);
}
