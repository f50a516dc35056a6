VERTEX
#version 120
INCLUDE
sketchstaticvertex
PIXEL
#version 120
INCLUDE
sketchstaticpixel
void main()
{
    // Far things are a few strokes in patches, on a colour that is almost paper.
    gl_FragColor = vec4(fixedColour(0.75, 1.04, 0.07, 0.62), surfaceMark);
}
