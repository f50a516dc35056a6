// Vertex stage of fixed things. Strokes lie on the faces as a hand would lay them: along the face that looks
// most towards the viewer, top or side.
varying float light;
varying float remote;
varying vec3 place;
varying vec2 grained;
varying vec2 chance;
varying vec3 facing;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    vec4 point = gl_ModelViewMatrix * gl_Vertex;
    vec3 normal = normalize(gl_NormalMatrix * gl_Normal);
    light = sunlight(normal, point.xyz);
    remote = remoteness(point.xyz);
    place = drawingPlace(point.xyz) * vec3(1.4, -1.4, 1.4) / hatchSpan;
    facing = abs(normal);
    // Each thing is drawn with a chance of its own, which stays with the place where it stands.
    vec3 stand = floor(standingPlace() * 2.0 + 0.5);
    chance = fract(sin(vec2(dot(stand, vec3(1.27, 3.11, 7.47)), dot(stand, vec3(2.69, 1.83, 4.61)))) * 437.58);
    grained = gl_MultiTexCoord0.xy * 1.4 / hatchSpan + chance;
    gl_Position = gl_ProjectionMatrix * point;
}
