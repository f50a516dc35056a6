// Pixel stage of everything shaded with strokes.
// The wash of things whose own colour belongs to the game, which flashes it: alpha 1 where there is one. Things
// that never flash are washed in their own colour.
uniform vec4 wash;
vec3 washColour()
{
    return onPaper(wash.a > 0.0 ? basecolor.rgb * wash.rgb : basecolor.rgb);
}
float paperGrain()
{
    return texture2D(tex1, gl_FragCoord.xy * paperScale() / 256.0).r;
}
// Slow drifts of the hand, -1..1: shading comes in patches, never as an even screen.
float drift(vec2 place)
{
    vec2 p = place * 4.5;
    return sin(p.x * 1.3 + 1.7 * sin(p.y * 0.9)) * sin(p.y * 1.7 + 1.3 * sin(p.x * 0.7 + 2.0));
}
// at: the point of the hatch texture drawn here. tone: 1 bare paper, 0 the pencil's full weight.
// spread: what the drift of the hand adds to the tone of the strokes, though not to the wash under them.
// weight: how dark one stroke is, 0..1.
vec3 shaded(vec2 at, float tone, float spread, float weight)
{
    float stroke = texture2D(tex, at).r;
    float grain = paperGrain();
    float stroked = tone + spread;
    float ink = smoothstep(stroked - 0.13, stroked + 0.09, stroke);
    // Shade is also pressed harder than half light, and the grain lets the paper through.
    float pressure = weight * mix(0.6, 1.0, 1.0 - tone) * mix(0.3, 1.0, smoothstep(0.05, 0.75, grain));
    // The wash thins out where the light falls and settles in the valleys of the paper.
    float cover = mix(1.0, 0.4, smoothstep(0.75, 1.0, tone + 0.25 * spread)) * mix(1.0, 0.86, grain);
    vec3 colour = washColour();
    vec3 ground = mix(paperColour, colour, cover);
    vec3 lead = mix(graphite, colour * 0.4, 0.25);
    return mix(ground, lead, ink * pressure);
}
// The same for what lives: each redraw lays other strokes.
vec3 pencil(vec2 place, float tone, float spread, float weight)
{
    return shaded(place + redrawJump(), tone, spread, weight);
}
vec3 pencil(vec2 place, float tone, float weight)
{
    return pencil(place, tone, 0.0, weight);
}
