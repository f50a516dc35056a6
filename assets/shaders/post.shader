VERTEX
#version 120
// The finished picture: the drawing itself, a little smudged where it is dark all around.
varying vec2 at;
void main()
{
    at = gl_MultiTexCoord0.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform sampler2D tex1;
uniform float uvx;
uniform float uvy;
varying vec2 at;
INCLUDE
papercolour
void main()
{
    vec3 drawn = texture2D(tex1, at * vec2(uvx, uvy)).rgb;
    vec3 around = texture2D(tex, at).rgb / paperColour;
    gl_FragColor = vec4(drawn * mix(vec3(1.0), min(around, 1.0), 0.15), 1.0);
}
