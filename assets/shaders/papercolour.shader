// The sheet itself, as the drawing sees it: drawn straight to the window, the clear colour is the paper.
const vec3 paperColour = vec3(0.955, 0.935, 0.885);
