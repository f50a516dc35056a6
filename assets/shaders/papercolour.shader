// The sheet itself, as the drawing sees it. Drawn straight to the window, the clear colour is the paper.
const vec3 paperColour = vec3(0.955, 0.935, 0.885);
// The alpha of what stands still and of figures: here the window has no use for it.
const float surfaceMark = 1.0;
const float figureMark = 1.0;
// A wash as it looks when it has dried on the paper.
vec3 onPaper(vec3 wash)
{
    return wash;
}
