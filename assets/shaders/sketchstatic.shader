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
    // Ground stays pale, so that figures stand out in front of it.
    gl_FragColor = vec4(fixedColour(0.45, 1.02, 0.2, 0.62), surfaceMark);
}
