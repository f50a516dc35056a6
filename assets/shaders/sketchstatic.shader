VERTEX
#version 120
INCLUDE
sketchstaticvertex
PIXEL
#version 120
uniform float toneLow;
uniform float toneHigh;
INCLUDE
sketchstaticpixel
void main()
{
    // Ground stays pale, so that figures stand out in front of it.
    vec2 drawn = facePlace();
    float tone = mix(0.48 + toneLow, 1.02 + toneHigh, light) + 0.12 * drift(drawn);
    gl_FragColor = vec4(pencil(drawn, tone, 0.72), 1.0);
}
