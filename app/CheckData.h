// Reads every file of the data folder the way the game would, but says what is wrong.
#pragma once

// Prints "file:line: reason" for each malformed place and each missing reference; line 0 for binary files.
// Returns the process's exit code: 1 if there was any.
int checkData();
