VERTEX
#version 120
// Smoke, dust and splashes: the texture's alpha is the shape, the vertex colour tints it and thins it out.
varying vec2 shape;
varying vec2 place;
varying vec4 tint;
INCLUDE
sketchcommon
void main()
{
    shape = gl_MultiTexCoord0.xy;
    place = gl_MultiTexCoord0.xy * 0.3;
    tint = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
// The particle's own picture; hatch and grain stay on the first two units.
uniform sampler2D tex2;
varying vec2 shape;
varying vec2 place;
varying vec4 tint;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    vec4 picture = texture2D(tex2, shape);
    float tone = dot(picture.rgb, vec3(0.333));
    gl_FragColor = vec4(pencil(place, tone, 0.7) * tint.rgb, picture.a * tint.a);
}
