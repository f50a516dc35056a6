VERTEX
#version 120
// The second blur: upwards and down, over the whole small picture.
varying vec2 at;
void main()
{
    at = gl_MultiTexCoord0.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
varying vec2 at;
// Six readings between neighbours; the lower half leans the other way.
vec4 column(float x)
{
    vec4 sum = texture2D(tex, at + vec2(x, 0.8) / 256.0) + texture2D(tex, at + vec2(-x, -0.8) / 256.0);
    sum += (texture2D(tex, at + vec2(-x, 2.6) / 256.0) + texture2D(tex, at + vec2(x, -2.6) / 256.0)) * 0.7;
    sum += (texture2D(tex, at + vec2(x, 4.5) / 256.0) + texture2D(tex, at + vec2(-x, -4.5) / 256.0)) * 0.25;
    return sum / 3.9;
}
void main()
{
    gl_FragColor = (column(0.8) + column(-0.8)) * 0.5;
}
