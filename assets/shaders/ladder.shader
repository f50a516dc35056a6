VERTEX
#version 120
// A ladder is one flat plate, x -3..3 and y -5..5 of a tile; this program draws its rails and rungs on it, so
// that a run of tiles merged into one tall plate gains rungs instead of stretching them.
uniform float scaleY;
varying vec2 place;
varying float tall;
INCLUDE
sketchcommon
void main()
{
    // Height above the foot of the ladder, in units.
    float repeat = scaleY > 0.0 ? scaleY : 1.0;
    place = vec2(gl_Vertex.x, (gl_Vertex.y + 5.0) * repeat);
    tall = 10.0 * repeat;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
varying vec2 place;
varying float tall;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
// Distance to a board of half size h around the origin, negative inside.
float board(vec2 p, vec2 h)
{
    vec2 d = abs(p) - h;
    return length(max(d, 0.0)) + min(max(d.x, d.y), 0.0);
}
void main()
{
    // Whoever nailed it together had no level: rails bow, rungs tilt. A climber's feet rest 3 above the foot of
    // the ladder and every 4.5 from there.
    float bow = 0.14 * sin(place.y * 0.31 + 0.8);
    float side = place.x < 0.0 ? -1.0 : 1.0;
    float rail = board(vec2(place.x - side * 2.25 - bow, 0.0), vec2(0.46 + 0.07 * sin(place.y * 0.9 + side), 1.0));
    float number = clamp(floor((place.y - 0.75) / 4.5), 0.0, floor((tall - 3.2) / 4.5));
    float tilt = 0.16 * sin(number * 2.4 + 1.0);
    float centre = 2.6 + number * 4.5 + tilt * place.x / 3.0;
    float rung = board(vec2(place.x + 0.1 * sin(number * 5.0), place.y - centre), vec2(2.72, 0.34));
    // The rungs are nailed over the rails.
    float shape = min(rail, rung);
    float pixel = max(fwidth(place.y), fwidth(place.x));
    if (shape > pixel * 0.6) discard;
    float lit = rung < 0.0 ? 0.86 - 0.5 * smoothstep(0.1, -0.34, place.y - centre) : 0.84 - 0.3 * step(0.0, (place.x - side * 2.25) - 0.1);
    vec3 drawn = pencil(place * vec2(1.6, -1.6) / hatchSpan, lit, 0.8);
    float along = place.y * 0.7 + place.x * 1.3 + redraw() * 2.7;
    float width = (0.75 + 0.25 * sin(along * 1.7)) * 1.3 * fwidth(place.y) / paperScale().y;
    float border = min(abs(rung), rung > 0.0 ? abs(rail) : 1.0);
    float line = (1.0 - smoothstep(width * 0.5, width * 0.5 + pixel, border)) * (0.7 + 0.3 * sin(along));
    float nail = 1.0 - smoothstep(0.12, 0.12 + pixel, length(vec2(abs(place.x) - 2.25, place.y - centre)));
    float ink = max(line, nail) * mix(0.6, 1.0, paperGrain());
    gl_FragColor = vec4(mix(drawn, graphite, ink), surfaceMark);
}
