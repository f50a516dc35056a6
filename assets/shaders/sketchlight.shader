// Vertex stage: how much of the sun falls on a surface, 0..1. The sun is the scene's first light; where a
// scene has none, one stands over the draughtsman's left shoulder, as the drawing's convention has it.
float sunlight(vec3 normal, vec3 point)
{
    vec4 sun = gl_LightSource[0].position;
    vec3 towards = sun.w > 0.5 ? sun.xyz - point : sun.xyz;
    float bright = gl_LightSource[0].diffuse.r + gl_LightSource[0].diffuse.g + gl_LightSource[0].diffuse.b;
    if (bright < 0.01 || dot(towards, towards) < 0.0001) towards = vec3(-0.45, 0.75, 0.5);
    return clamp(dot(normal, normalize(towards)) * 0.55 + 0.45, 0.0, 1.0);
}
INCLUDE
sketchdepth
