VERTEX
#version 120
// Puffs, sparks, splashes: the picture says where there is paper and where there is ink, the vertex colour washes
// the paper and thins all of it out.
varying vec2 shape;
varying vec4 tint;
void main()
{
    shape = gl_MultiTexCoord0.xy;
    tint = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
// The particle's own picture is on the unit tex; there is no hatch.
varying vec2 shape;
varying vec4 tint;
INCLUDE
papercolour
INCLUDE
sketchcommon
// Every redraw leads the pencil a little differently around the same shape.
vec2 shaken(vec2 place)
{
    float turn = redraw() * 1.9;
    vec2 shake = vec2(sin(place.y * 11.0 + turn), sin(place.x * 9.0 + 1.7 * turn + 1.0));
    return clamp(place + 0.014 * shake, 0.004, 0.996);
}
void main()
{
    vec4 picture = texture2D(tex, shaken(shape));
    float grain = texture2D(tex1, gl_FragCoord.xy * paperScale() / 256.0).r;
    float ink = (1.0 - picture.r) * mix(0.6, 1.0, smoothstep(0.05, 0.7, grain));
    vec3 ground = paperColour * mix(vec3(1.0), tint.rgb, mix(1.0, 0.86, grain));
    vec3 lead = mix(graphite, tint.rgb * 0.4, 0.25);
    // What fades is rubbed out: the tops of the paper's grain go first.
    float left = clamp(1.6 * tint.a - 0.6 * grain, 0.0, 1.0);
    gl_FragColor = vec4(mix(ground, lead, ink), picture.a * left);
}
