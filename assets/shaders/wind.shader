VERTEX
#version 120
// Gusts on a flat plate, from x 0 towards x 60: lines that hurry along it and leave it bare between them.
uniform float scroll;
varying vec2 point;
varying float blown;
INCLUDE
sketchcommon
void main()
{
    point = vec2(gl_Vertex.x, gl_Vertex.y);
    // By the material's own animation, and by whoever counts for himself.
    blown = (gl_TextureMatrix[0] * vec4(0.0, 0.0, 0.0, 1.0)).x + scroll;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
varying vec2 point;
varying float blown;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
const float span = 30.0;
void main()
{
    // Rows 2.5 apart, each with gusts of its own; they sway up and down a little on their way.
    float sway = 0.7 * sin(point.x * 0.16 + redraw() * 0.6);
    float row = floor((point.y + sway) / 2.5);
    float across = (point.y + sway) - (row + 0.5) * 2.5;
    float chance = fract(sin(row * 12.9 + 3.1) * 437.5);
    float along = fract(point.x / span + chance + blown * (0.8 + 0.4 * fract(chance * 5.3)));
    float tail = 0.3 + 0.35 * fract(chance * 9.1);
    // Thick at its head, thin where it comes from.
    float body = along / tail;
    float width = body < 1.0 ? 0.34 * smoothstep(0.0, 0.8, body) * smoothstep(1.0, 0.96, body) : 0.0;
    width *= smoothstep(0.0, 5.0, point.x) * smoothstep(60.0, 42.0, point.x);
    if (abs(across) > width) discard;
    float ink = 0.75 * mix(0.3, 1.0, smoothstep(0.1, 0.7, paperGrain()));
    gl_FragColor = vec4(mix(paperColour, mix(graphite, basecolor.rgb, 0.55), ink), surfaceMark);
}
