VERTEX
#version 120
// A flat colour that takes the light but no strokes, for lamps, beams and other things that shine.
varying float light;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    vec3 point = (gl_ModelViewMatrix * gl_Vertex).xyz;
    light = sunlight(normalize(gl_NormalMatrix * gl_Normal), point);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
varying float light;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    vec3 shade = basecolor.rgb * mix(0.8, 1.0, light);
    gl_FragColor = vec4(mix(shade, paperColour, 0.25 * paperGrain()), basecolor.a);
}
