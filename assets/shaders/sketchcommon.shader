// Paper and pencil, shared by every sketch program, in both stages. One texture unit each:
//   tex   hatch thresholds: a stroke appears where the tone falls below the texel
//   tex1  paper grain, locked to the picture
// Lengths on the paper are in pixels of a picture 720 lines high, so that a drawing keeps its look at any size.
uniform sampler2D tex;
uniform sampler2D tex1;
uniform vec4 basecolor;
uniform vec4 resScale;
uniform vec4 sketchOffset;
const vec3 graphite = vec3(0.165, 0.16, 0.175);
// World units that one side of the hatch texture covers at the plane of play: one texel, one paper pixel.
const float hatchSpan = 68.0;
// The picture's size in pixels, from the viewport figures in resScale.
vec2 pictureSize()
{
    return vec2(3.5 / resScale.z, -2.6 / resScale.w);
}
// Paper pixels for one pixel of the picture, along x and along y: a picture drawn at twice its height only has narrow
// pixels. Its true shape is the camera's.
vec2 paperScale()
{
    vec2 size = pictureSize();
    float shape = gl_ProjectionMatrix[1][1] / gl_ProjectionMatrix[0][0];
    return 720.0 * vec2(shape / size.x, 1.0 / size.y);
}
// The current redraw, 0..3: few and fixed, so that the eye soon knows them all.
float redraw()
{
    return floor(fract(sketchOffset.x) * 4.0);
}
vec2 redrawJump()
{
    float choice = redraw();
    return vec2(0.36 * choice + 0.05 * choice * choice, 0.27 * choice);
}
// Turns a place so that the strokes found there rise to the right by so many degrees. In the texture it is 42.
vec2 strokesAt(vec2 place, float degrees)
{
    float turn = radians(degrees - 42.0);
    float c = cos(turn);
    float s = sin(turn);
    return vec2(c * place.x - s * place.y, s * place.x + c * place.y);
}
