VERTEX
#version 120
// The picture, drawn small: the first of two blurs. uvx and uvy are the part of the target that is in use.
varying vec2 at;
void main()
{
    at = gl_MultiTexCoord0.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform float uvx;
uniform float uvy;
uniform float fade;
varying vec2 at;
INCLUDE
papercolour
void main()
{
    vec2 used = vec2(uvx, uvy);
    vec2 last = used * (1.0 - 1.0 / 512.0);
    vec3 sum = vec3(0.0);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
        {
            vec2 step = (vec2(float(x), float(y)) - 1.5) / 512.0;
            sum += texture2D(tex, clamp((at + step) * used, vec2(0.0), last)).rgb;
        }
    gl_FragColor = vec4(mix(sum / 16.0, paperColour, fade), 1.0);
}
