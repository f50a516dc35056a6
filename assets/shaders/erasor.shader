VERTEX
#version 120
// A rubber drawn over the sheet in broad strokes, from the upper left: erase 0 leaves all, 1 nothing.
varying vec2 at;
void main()
{
    at = vec2(gl_MultiTexCoord0.x, 1.0 - gl_MultiTexCoord0.y);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform float erase;
varying vec2 at;
INCLUDE
papercolour
void main()
{
    float stroke = texture2D(tex, at * vec2(1.6, 0.9) * 0.35).r;
    float when = 0.55 * (at.x * 0.7 + at.y * 0.3) + 0.45 * stroke;
    gl_FragColor = vec4(paperColour, smoothstep(when - 0.2, when, erase * 1.2 - 0.19));
}
