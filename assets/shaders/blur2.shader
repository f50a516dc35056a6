VERTEX
#version 120
// The second blur: wide and round, over the whole small picture.
varying vec2 at;
void main()
{
    at = gl_MultiTexCoord0.xy;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
PIXEL
#version 120
uniform sampler2D tex;
varying vec2 at;
void main()
{
    vec3 sum = vec3(0.0);
    float weights = 0.0;
    for (int y = -2; y <= 2; ++y)
        for (int x = -2; x <= 2; ++x)
        {
            vec2 step = vec2(float(x), float(y));
            float weight = exp(-0.4 * dot(step, step));
            sum += weight * texture2D(tex, at + step * 1.5 / 256.0).rgb;
            weights += weight;
        }
    gl_FragColor = vec4(sum / weights, 1.0);
}
