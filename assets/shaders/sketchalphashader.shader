VERTEX
#version 120
// Figures that fade: as sketchshader, with the alpha of their colour.
uniform float scale;
varying float light;
varying vec2 place;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    vec3 point = (gl_ModelViewMatrix * gl_Vertex).xyz;
    light = sunlight(normalize(gl_NormalMatrix * gl_Normal), point);
    place = gl_MultiTexCoord0.xy * (1.9 / (hatchSpan * max(scale, 0.01)));
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform float toneLow;
uniform float toneHigh;
varying float light;
varying vec2 place;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    float tone = mix(0.08 + toneLow, 0.98 + toneHigh, light) + 0.05 * drift(place);
    gl_FragColor = vec4(pencil(place, tone, 0.9), basecolor.a);
}
