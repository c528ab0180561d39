// Carries the headers that tests/CMakeLists.txt has compiled ahead.
