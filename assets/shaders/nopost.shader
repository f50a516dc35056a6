VERTEX
#version 120
// Over a picture drawn straight to the window, which it brightens by its own colour: as the fade grows, pencil pales.
void main()
{
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform float fade;
void main()
{
    gl_FragColor = vec4(vec3(0.04 * fade), 1.0);
}
