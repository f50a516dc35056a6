VERTEX
#version 120
INCLUDE
sketchfigurevertex
PIXEL
#version 120
INCLUDE
sketchfigurepixel
void main()
{
    gl_FragColor = vec4(figureColour(), figureMark);
}
