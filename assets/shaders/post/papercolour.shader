// The sheet itself, as the drawing sees it: white, because the last pass lays the paper under the whole picture.
const vec3 paperColour = vec3(1.0);
// The alpha of what stands still and of figures: the last pass clears a little room around figures.
const float surfaceMark = 0.0;
const float figureMark = 1.0;
// A wash that the paper will darken.
vec3 onPaper(vec3 wash)
{
    return min(wash / vec3(0.955, 0.935, 0.885), vec3(1.0));
}
