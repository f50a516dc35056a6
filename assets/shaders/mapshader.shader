VERTEX
#version 120
// A sheet with a picture on it, unit 2, whose lines a pencil rubs in: erase 1 is the bare sheet, 0 the whole drawing.
varying vec2 sheet;
varying float light;
INCLUDE
sketchcommon
INCLUDE
sketchlight
void main()
{
    sheet = gl_MultiTexCoord0.xy;
    light = sunlight(normalize(gl_NormalMatrix * gl_Normal), (gl_ModelViewMatrix * gl_Vertex).xyz);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex2;
uniform float erase;
varying vec2 sheet;
varying float light;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
// How far the pencil is past this place, in sheets: it goes to and fro from the upper left, in strokes a ninth of the
// sheet wide. Below 0 it has yet to come.
float passed(vec2 place)
{
    vec2 lying = vec2(0.88 * place.x - 0.47 * place.y, 0.47 * place.x + 0.88 * place.y);
    float unsteady = texture2D(tex1, place * 0.13).r - 0.5;
    lying.y += 0.04 * lying.x * lying.x + 0.05 * unsteady;
    float number = floor(lying.y * 9.0);
    float across = abs(fract(lying.y * 9.0) - 0.5) * 2.0;
    float travel = clamp((lying.x + 0.47) / 2.05, 0.0, 1.0);
    if (mod(number, 2.0) > 0.5) travel = 1.0 - travel;
    return (1.0 - erase) * 1.5 - (number + travel) / 16.0 - 0.06 * across * across;
}
void main()
{
    // Heights of the sheet; its picture is 7 by 4.
    vec2 place = sheet * vec2(1.75, 1.0);
    float grain = paperGrain();
    vec3 bare = onPaper(basecolor.rgb) * mix(0.97, 1.0, grain) * mix(0.86, 1.0, smoothstep(0.2, 0.8, light));
    // Lines wander by a hair with each redraw and let the tooth of the paper through.
    vec2 wander = vec2(sin(place.y * 19.0 + redraw() * 2.1), sin(place.x * 17.0 + redraw() * 3.7)) * 0.0007;
    vec4 picture = texture2D(tex2, sheet + wander);
    float ink = 1.0 - min(picture.r, min(picture.g, picture.b));
    vec3 marks = mix(picture.rgb, vec3(1.0), 0.45 * (1.0 - smoothstep(0.0, 0.55, grain)) * smoothstep(0.2, 0.7, ink));
    vec3 drawn = mix(bare, max(bare * marks, graphite), picture.a);
    // Strokes come first, then what lies between them; the side of the lead that rubs them in leaves its own trace,
    // which goes again.
    float stroke = texture2D(tex, strokesAt(place * 1.5, 62.0)).r;
    float past = passed(place);
    float shown = smoothstep(0.0, 0.16, past - 0.1 * (1.0 - stroke));
    float rubbing = smoothstep(-0.02, 0.06, past) * (1.0 - smoothstep(0.12, 0.42, past));
    float trace = rubbing * smoothstep(0.5, 0.85, stroke) * mix(0.35, 1.0, grain) * 0.5;
    if (erase <= 0.0) { shown = 1.0; trace = 0.0; }
    gl_FragColor = vec4(mix(mix(bare, drawn, shown), graphite, trace), figureMark);
}
