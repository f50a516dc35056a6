VERTEX
#version 120
// A drawn sheet held up to the viewer: its picture is shaded with the same strokes as everything else.
varying vec2 sheet;
void main()
{
    sheet = gl_MultiTexCoord0.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex2;
varying vec2 sheet;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    vec4 picture = texture2D(tex2, sheet);
    float tone = dot(picture.rgb, vec3(0.333));
    gl_FragColor = vec4(mix(picture.rgb, pencil(sheet * 4.0, tone, 0.8), 0.6), picture.a);
}
