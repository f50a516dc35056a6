VERTEX
#version 120
// Pieces of a track are modelled level and leaned here: what lies x to the right of their left end rises by tilt * x.
// Sleepers stay upright that way, and neighbours meet whatever the slope.
uniform float tilt;
// Degrees by which strokes rise to the right.
uniform float strokeAngle;
varying float light;
varying float remote;
varying vec2 place;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    vec4 leaned = gl_Vertex;
    leaned.y += tilt * gl_Vertex.x;
    vec3 point = (gl_ModelViewMatrix * leaned).xyz;
    vec3 normal = gl_NormalMatrix * (gl_Normal - vec3(tilt * gl_Normal.y, 0.0, 0.0));
    light = sunlight(normalize(normal), point);
    remote = max(remoteness(point), 0.0);
    place = strokesAt(gl_MultiTexCoord0.xy * 1.4 / hatchSpan, strokeAngle);
    gl_Position = gl_ProjectionMatrix * vec4(point, 1.0);
}
PIXEL
#version 120
// Added to the darkest and the lightest tone.
uniform float toneLow;
uniform float toneHigh;
varying float light;
varying float remote;
varying vec2 place;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    float tone = mix(mix(0.42 + toneLow, 1.0 + toneHigh, light), 1.0, 0.35 * remote);
    vec3 drawn = shaded(place + redrawJump() * 0.004, tone, 0.15 * drift(place), 0.66 * (1.0 - 0.5 * remote));
    gl_FragColor = vec4(mix(drawn, paperColour, 0.4 * remote), surfaceMark);
}
