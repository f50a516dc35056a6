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
    float tone = mix(0.5 + toneLow, 1.02 + toneHigh, light);
    gl_FragColor = vec4(pencil(drawn, tone, 0.05 + 0.2 * drift(drawn), 0.66), 1.0);
}
