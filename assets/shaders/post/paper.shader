VERTEX
#version 120
// Nothing: the drawing starts on white, and the last pass lays the paper under it.
void main()
{
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
void main()
{
    gl_FragColor = vec4(1.0, 1.0, 1.0, 0.0);
}
