// A library that holds nothing, to compare ours with.
