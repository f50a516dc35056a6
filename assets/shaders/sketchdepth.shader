// Vertex stage: places in the world. The sun stands still in it while the view moves, so all is measured from there.
const vec3 sunPlace = vec3(-9600.0, 12000.0, 12800.0);
vec3 drawingPlace(vec3 point)
{
    return gl_LightSource[0].position.w > 0.5 ? point - gl_LightSource[0].position.xyz + sunPlace : gl_Vertex.xyz;
}
// Where the thing stands that this vertex belongs to.
vec3 standingPlace()
{
    return gl_LightSource[0].position.w > 0.5 ? drawingPlace(gl_ModelViewMatrix[3].xyz) : vec3(0.0);
}
// How far behind the plane of play: 0 on it, 0.5 one step behind, 1 on the horizon; below 0 in front of it. The
// pencil grows lighter with it, so that what matters stands out whatever it is made of.
float remoteness(vec3 point)
{
    if (gl_LightSource[0].position.w < 0.5) return 0.0;
    float back = -drawingPlace(point).z;
    float step = max(smoothstep(9.0, 10.5, -standingPlace().z), smoothstep(11.0, 40.0, back));
    return 0.5 * step + 0.5 * smoothstep(50.0, 420.0, back) - smoothstep(25.0, 50.0, -back);
}
