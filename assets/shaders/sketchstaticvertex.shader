// Vertex stage of fixed things. Strokes lie on the faces as a hand would lay them: along the face that looks
// most towards the viewer, top or side.
varying float light;
varying vec3 place;
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
    place = drawingPlace(point.xyz) * vec3(1.4, -1.4, 1.4) / hatchSpan;
    facing = abs(normal);
    gl_Position = gl_ProjectionMatrix * point;
}
