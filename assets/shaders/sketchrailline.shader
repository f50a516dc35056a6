VERTEX
#version 120
// The outline of a leaned piece of track. The renderer's own outlines know nothing of the tilt, so these pieces carry
// a second skin: pushed out along its smoothed normals by lineWidth pixels, it shows its far side only.
uniform float tilt;
uniform float lineWidth;
varying float along;
INCLUDE
sketchcommon
void main()
{
    vec4 leaned = gl_Vertex;
    leaned.y += tilt * gl_Vertex.x;
    vec3 smooth = gl_Color.rgb * 2.0 - 1.0;
    vec3 normal = gl_NormalMatrix * (smooth - vec3(tilt * smooth.y, 0.0, 0.0));
    vec4 clip = gl_ModelViewProjectionMatrix * leaned;
    along = dot(gl_MultiTexCoord0.xy, vec2(1.1, 0.9)) + redraw() * 2.7;
    float wide = lineWidth * (0.9 + 0.35 * sin(along * 0.9));
    vec2 outwards = normal.xy / (length(normal.xy) + 0.0001);
    clip.xy += outwards * wide / paperScale() * 2.0 / pictureSize() * clip.w;
    gl_Position = clip;
}
PIXEL
#version 120
varying float along;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    float pressure = 0.75 + 0.25 * sin(along * 0.55);
    float ink = basecolor.a * pressure * smoothstep(-0.1, 0.3, paperGrain() + 0.2 * pressure);
    gl_FragColor = vec4(mix(paperColour, mix(graphite, basecolor.rgb * 0.35, 0.2), ink), surfaceMark);
}
