VERTEX
#version 120
// The finished picture: the drawing, on paper, by a hand that is never quite still.
varying vec2 at;
void main()
{
    at = gl_MultiTexCoord0.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
// Of both pictures the alpha says how much of a figure is there.
//   tex   the picture, small and blurred    tex1  the picture; uvx and uvy are the part in use
//   tex2  grain of the paper                  tex3  hatch thresholds
uniform sampler2D tex;
uniform sampler2D tex1;
uniform sampler2D tex2;
uniform sampler2D tex3;
uniform float uvx;
uniform float uvy;
uniform vec4 resScale;
uniform vec4 alphaCol;
uniform vec4 sketchOffset;
varying vec2 at;
const vec3 sheet = vec3(0.972, 0.952, 0.905);
vec2 used;
vec2 last;
vec4 drawing(vec2 place)
{
    return texture2D(tex1, clamp(place * used, vec2(0.0), last));
}
float light(vec3 colour)
{
    return dot(colour, vec3(0.3, 0.59, 0.11));
}
// The picture with stairs along its lines smoothed: the line's direction is taken from the four corners around, and
// the pixel averaged along it.
vec4 smoothDrawing(vec2 place, vec2 pixel)
{
    float a = light(drawing(place + pixel * vec2(-0.5, -0.5)).rgb);
    float b = light(drawing(place + pixel * vec2(0.5, -0.5)).rgb);
    float c = light(drawing(place + pixel * vec2(-0.5, 0.5)).rgb);
    float d = light(drawing(place + pixel * vec2(0.5, 0.5)).rgb);
    vec2 along = vec2(c + d - a - b, a + c - b - d);
    float flat_ = max((a + b + c + d) * 0.03, 0.01);
    along = clamp(along / (min(abs(along.x), abs(along.y)) + flat_), vec2(-4.0), vec2(4.0)) * pixel;
    vec4 near = (drawing(place + along * 0.17) + drawing(place - along * 0.17)) * 0.5;
    vec4 far = (drawing(place + along * 0.5) + drawing(place - along * 0.5)) * 0.25 + near * 0.5;
    float level = light(far.rgb);
    bool outside = level < min(min(a, b), min(c, d)) || level > max(max(a, b), max(c, d));
    return outside ? near : far;
}
void main()
{
    vec2 size = vec2(3.5 / resScale.z, -2.6 / resScale.w);
    vec2 pixel = 1.0 / size;
    used = vec2(uvx, uvy);
    last = used - used * pixel * 0.5;
    // Points on the paper, whose sheet is 720 high, and how long one of them is in the picture.
    vec2 point = at * size * (720.0 / size.y);
    vec2 one = pixel * (size.y / 720.0);
    // Each redraw the lines wander elsewhere by about a pixel, slowly along their way.
    vec2 jump = floor(fract(sketchOffset.xy) * 4.0) * vec2(0.27, 0.41);
    vec2 wander = vec2(texture2D(tex2, point * 0.00031 + jump).r, texture2D(tex2, point * 0.00031 + jump + 0.37).r) - 0.5;
    vec4 drawn = smoothDrawing(at + wander * 2.0 * one, pixel);
    // The hand goes over its lines a second time, more lightly, and does not quite meet them.
    vec3 again = drawing(at + (vec2(1.6, -1.1) - wander.yx * 4.0) * one).rgb;
    vec3 picture = min(drawn.rgb, 1.0 - (1.0 - again) * 0.28);
    // Figures have a little clear paper around them.
    vec4 around = texture2D(tex, at);
    float room = smoothstep(0.04, 0.45, around.a) * (1.0 - drawn.a);
    picture = mix(picture, vec3(1.0), 0.42 * room);
    // The drawing ends before the sheet does, a stroke here, a stroke there.
    vec2 border = min(at, 1.0 - at) * size * (720.0 / size.y);
    float margin = min(border.x, border.y) / 32.0;
    float inside = smoothstep(-0.12, 0.12, margin - 0.1 - 0.9 * texture2D(tex3, point / 512.0).r);
    picture = mix(vec3(1.0), picture, inside);
    // Graphite comes off on what lies around it, and stays on the tips of the paper's grain.
    float grain = texture2D(tex2, point / 256.0).r;
    float fine = texture2D(tex2, point.yx / vec2(150.0, 100.0)).r;
    float smudge = (1.0 - light(around.rgb)) * smoothstep(0.1, 0.9, grain) * inside * (1.0 - 0.7 * room);
    vec3 rubbed = mix(vec3(1.0), alphaCol.rgb * 0.8, clamp(0.8 * smudge, 0.0, 0.5));
    vec3 paper = sheet * (1.0 - 0.016 * (1.0 - grain) - 0.034 * (1.0 - fine));
    vec2 corner = at - 0.5;
    paper *= 1.0 - 0.06 * dot(corner, corner);
    gl_FragColor = vec4(picture * rubbed * paper, 1.0);
}
