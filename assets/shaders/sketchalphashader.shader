VERTEX
#version 120
// Figures that fade: as sketchshader, with the alpha of their colour.
INCLUDE
sketchfigurevertex
PIXEL
#version 120
INCLUDE
sketchfigurepixel
void main()
{
    gl_FragColor = vec4(figureColour(), basecolor.a);
}
