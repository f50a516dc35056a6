VERTEX
#version 120
// Over a picture drawn straight to the window, which it brightens by its own colour: paper shows through the graphite
// where its grain stands out, and as the fade grows, all pencil pales.
void main()
{
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform vec4 resScale;
uniform float fade;
void main()
{
    float pictureHeight = -2.6 / resScale.w;
    float grain = texture2D(tex, gl_FragCoord.xy * (720.0 / pictureHeight) / 256.0).r;
    gl_FragColor = vec4(vec3(0.015 * grain * grain + 0.25 * fade), 1.0);
}
