VERTEX
#version 120
// The bare sheet behind everything.
void main()
{
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform vec4 resScale;
INCLUDE
papercolour
void main()
{
    // The grain is locked to the picture, as it is for what is drawn on the sheet.
    vec2 size = vec2(3.5 / resScale.z, -2.6 / resScale.w);
    float shape = gl_ProjectionMatrix[1][1] / gl_ProjectionMatrix[0][0];
    vec2 point = gl_FragCoord.xy * 720.0 * vec2(shape / size.x, 1.0 / size.y) / 256.0;
    float grain = texture2D(tex, point).r + texture2D(tex, point * 0.37 + 0.5).r;
    gl_FragColor = vec4(paperColour * (1.0 - 0.014 * (1.0 - grain)), 1.0);
}
