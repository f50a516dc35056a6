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
    // Far things are a few broad strokes on a colour that is almost paper.
    vec2 drawn = facePlace() * 0.5;
    float tone = mix(0.75 + toneLow, 1.0 + toneHigh, light);
    gl_FragColor = vec4(mix(pencil(drawn, tone, 0.05 * drift(drawn), 0.5), paperColour, 0.3), 1.0);
}
