VERTEX
#version 120
// A rubber drawn over the sheet, to and fro in broad strokes from the upper left: erase 0 leaves all, 1 nothing.
varying vec2 at;
void main()
{
    at = vec2(gl_MultiTexCoord0.x, 1.0 - gl_MultiTexCoord0.y);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
uniform sampler2D tex1;
uniform float erase;
varying vec2 at;
INCLUDE
papercolour
void main()
{
    // Places in picture heights, turned so that strokes run along x, a little bowed.
    vec2 place = at * vec2(16.0 / 9.0, 1.0);
    vec2 lying = vec2(0.82 * place.x - 0.57 * place.y, 0.57 * place.x + 0.82 * place.y);
    float unsteady = texture2D(tex1, place * 0.11).r - 0.5;
    lying.y += 0.05 * lying.x * lying.x + 0.03 * unsteady;
    // Strokes are a twelfth of the height wide. They follow one another down the sheet, to and fro, and each pass of
    // the rubber takes most of what is left.
    float number = floor(lying.y * 12.0);
    float across = abs(fract(lying.y * 12.0) - 0.5) * 2.0;
    float travel = clamp((lying.x + 0.57) / 2.03, 0.0, 1.0);
    if (mod(number, 2.0) > 0.5) travel = 1.0 - travel;
    float when = (number + travel) / 23.0;
    float tooth = texture2D(tex1, place * 720.0 / 256.0).r;
    float dragged = texture2D(tex, lying * vec2(0.35, 2.6)).r;
    float passed = erase * 1.4 - when - 0.05 * across * across - 0.03 * unsteady;
    float once = smoothstep(0.0, 0.05, passed);
    float twice = smoothstep(0.22, 0.4, passed);
    // What the first pass leaves: faint traces in the grain, along the way of the rubber, and between strokes.
    float left = 0.12 + 0.26 * smoothstep(0.35, 0.95, dragged) * (0.4 + 0.6 * tooth) + 0.25 * smoothstep(0.75, 1.0, across);
    float gone = once * (1.0 - left * (1.0 - twice));
    // Crumbs lie where the rubber has just been, until the hand brushes them off.
    vec2 spot = place * 60.0;
    vec2 cell = floor(spot);
    vec2 chance = fract(sin(vec2(dot(cell, vec2(12.7, 31.1)), dot(cell, vec2(26.9, 18.3)))) * 437.58);
    vec2 from = fract(spot) - 0.3 - 0.4 * chance;
    from = vec2(from.x + from.y * (chance.x - 0.5), from.y * (1.4 + chance.y));
    float crumb = (1.0 - smoothstep(0.1, 0.16, length(from))) * step(0.9, fract(chance.x * 7.0 + chance.y * 3.0));
    crumb *= smoothstep(0.02, 0.04, passed) * (1.0 - smoothstep(0.06, 0.16, passed)) * (1.0 - smoothstep(0.9, 1.0, erase));
    gone = max(gone, smoothstep(0.95, 1.0, erase));
    gl_FragColor = vec4(mix(paperColour, paperColour * 0.55, crumb), max(gone, crumb));
}
