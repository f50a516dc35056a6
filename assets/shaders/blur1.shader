VERTEX
#version 120
// The picture, drawn small and smeared sideways: the first of two blurs. uvx and uvy are the part of the target that
// is in use, offset where the view is, in sheets of 170 by 270 units.
uniform float uvx;
uniform float uvy;
uniform vec4 offset;
varying vec2 at;
varying vec2 sheet;
void main()
{
    at = gl_MultiTexCoord0.xy * vec2(uvx, uvy);
    // At the plane of play the view is about 100 units high.
    sheet = (gl_MultiTexCoord0.xy - 0.5) * vec2(178.0 / 170.0, 100.0 / 270.0) + offset.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform sampler2D tex1;
uniform float uvx;
uniform float uvy;
uniform float fade;
varying vec2 at;
varying vec2 sheet;
vec4 row(float y)
{
    vec2 used = vec2(uvx, uvy);
    vec2 last = used * (1.0 - 1.0 / 512.0);
    vec2 step = used / 256.0;
    vec4 sum = texture2D(tex, clamp(at + step * vec2(-1.9, y), vec2(0.0), last)) * 0.5;
    sum += texture2D(tex, clamp(at + step * vec2(-1.1, -y), vec2(0.0), last));
    sum += texture2D(tex, clamp(at + step * vec2(-0.35, y), vec2(0.0), last)) * 1.5;
    sum += texture2D(tex, clamp(at + step * vec2(0.35, -y), vec2(0.0), last)) * 1.5;
    sum += texture2D(tex, clamp(at + step * vec2(1.1, y), vec2(0.0), last));
    sum += texture2D(tex, clamp(at + step * vec2(1.9, -y), vec2(0.0), last)) * 0.5;
    return sum / 6.0;
}
void main()
{
    vec4 around = (row(0.25) + row(-0.25)) * 0.5;
    // A hand smears some places more than others, and those belong to the drawing, not to the window. Rubbing out
    // spreads what it takes away.
    float smear = mix(0.55, 1.25, texture2D(tex1, sheet * 0.23).r) * (1.0 + 1.5 * fade);
    gl_FragColor = vec4(1.0 - (1.0 - around.rgb) * smear, around.a);
}
