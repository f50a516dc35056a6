VERTEX
#version 120
// A particle's picture as it is: light where it is paper, tinted by the vertex colour, and its own alpha.
varying vec2 shape;
varying vec4 tint;
void main()
{
    shape = gl_MultiTexCoord0.xy;
    tint = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
varying vec2 shape;
varying vec4 tint;
void main()
{
    gl_FragColor = texture2D(tex, shape) * tint;
}
