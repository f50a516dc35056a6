VERTEX
#version 120
// A bare pencil line in the material's colour: with a lineWidth, in pixels, the surface is pushed out along
// its smoothed normals into a hull, whose far side shows as the outline.
// scale is 1 / the unit's scale. The alpha of the colour is the weight of the line.
uniform float scale;
uniform float lineWidth;
varying float along;
varying float weight;
INCLUDE
sketchcommon
INCLUDE
sketchdepth
// Hard edges split their vertices; such meshes carry the smoothed normal in the vertex colour. Others are
// drawn in white.
vec3 smoothNormal()
{
    vec3 stored = gl_Color.rgb;
    if (stored.r + stored.g + stored.b > 2.98) return gl_Normal;
    return stored * 2.0 - 1.0;
}
void main()
{
    vec3 normal = normalize(gl_NormalMatrix * smoothNormal());
    vec4 clip = gl_ModelViewProjectionMatrix * gl_Vertex;
    float remote = remoteness((gl_ModelViewMatrix * gl_Vertex).xyz);
    // What is behind has lighter lines; what is in front has them twice as wide.
    weight = basecolor.a * (1.0 - 0.6 * max(remote, 0.0));
    float broad = mix(0.5, 1.0, weight) * (1.0 + max(-remote, 0.0));
    // Along the line the hand presses and eases, at places that each redraw moves.
    vec2 rest = gl_MultiTexCoord0.xy / max(scale, 0.01);
    along = dot(rest, vec2(1.1, 0.9)) + redraw() * 2.7;
    float swell = 0.9 + 0.32 * sin(along * 0.9) + 0.2 * sin(along * 2.7 + 1.0);
    vec2 outwards = normal.xy / (length(normal.xy) + 0.0001);
    vec2 perPixel = paperScale();
    float wide = max(lineWidth * broad * swell, 0.7 * min(perPixel.x, perPixel.y));
    clip.xy += outwards * wide / perPixel * 2.0 / pictureSize() * clip.w;
    // Soles, which rest at height 0, would lose their line in the ground: it is drawn up on their edge instead,
    // by coming a little nearer than the boot.
    float sole = (1.0 - smoothstep(0.1, 0.4, abs(gl_MultiTexCoord0.y))) * smoothstep(0.1, 0.5, -normal.y);
    clip.z -= 0.0009 * sole * clip.w;
    gl_Position = clip;
}
PIXEL
#version 120
varying float along;
varying float weight;
INCLUDE
papercolour
INCLUDE
sketchcommon
INCLUDE
sketchsurface
void main()
{
    float pressure = clamp(0.66 + 0.3 * sin(along * 0.55) + 0.2 * sin(along * 1.9 + 4.0), 0.0, 1.0);
    float ink = weight * mix(0.5, 1.0, pressure) * smoothstep(-0.1, 0.3, paperGrain() + 0.4 * (pressure - 0.5));
    vec3 lead = mix(graphite, basecolor.rgb * 0.35, 0.2);
    gl_FragColor = vec4(mix(paperColour, lead, ink), basecolor.a > 0.95 ? figureMark : surfaceMark);
}
