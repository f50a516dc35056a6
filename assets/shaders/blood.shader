VERTEX
#version 120
// A splash on a flat plate around the origin, drawn here: 10 units of the plate are 1 in its shape.
varying vec2 shape;
varying vec2 place;
INCLUDE
sketchcommon
void main()
{
    shape = gl_MultiTexCoord0.xy / 10.0;
    place = strokesAt(gl_MultiTexCoord0.xy * 1.6 / hatchSpan, 80.0);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
// 0, then below it: how far the splash has run down.
uniform float scroll;
// Tells one splash from the next.
uniform float seed;
varying vec2 shape;
varying vec2 place;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
// Above 0 inside: a blot with teeth, and drops thrown out of it, most of them ahead.
float splash(vec2 p)
{
    float turn = atan(p.y, p.x);
    float reach = 0.23 + 0.07 * sin(3.0 * turn + 2.0 * seed) + 0.06 * sin(7.0 * turn - 5.0 * seed) + 0.035 * sin(12.0 * turn + seed);
    float inside = reach - length(p);
    for (int i = 0; i < 6; ++i)
    {
        float number = float(i) + 6.0 * seed;
        float chance = fract(sin(number * 12.9) * 43.7);
        float way = 1.5 * (chance - 0.5) + (i > 3 ? 3.1 : 0.0);
        vec2 drop = (0.36 + 0.24 * fract(chance * 7.3)) * vec2(cos(way), sin(way));
        inside = max(inside, 0.035 + 0.045 * fract(chance * 3.7) - length(p - drop));
    }
    return inside;
}
void main()
{
    // It runs in threads: the farther down, the less is left of it, and least between the threads.
    float thread = 0.5 + 0.5 * sin(shape.x * 31.0 + 4.0 * seed);
    float inside = -1.0;
    for (int i = 0; i < 12; ++i)
    {
        float run = float(i) / 11.0;
        float left = splash(shape + vec2(0.0, run * scroll)) + 0.2 * run * scroll * (1.0 + 4.0 * thread);
        inside = max(inside, left);
    }
    inside += 0.08 * scroll;
    float pixel = fwidth(shape.y);
    if (inside < -0.5 * pixel) discard;
    vec3 drawn = pencil(place, 0.42, 0.3 * drift(place), 0.85);
    float line = 1.0 - smoothstep(1.0, 2.2, inside / pixel);
    gl_FragColor = vec4(mix(drawn, graphite, line * mix(0.6, 0.95, paperGrain())), figureMark);
}
