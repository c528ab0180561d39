// An empty source for the target that precompiles the headers of all tests; see tests/CMakeLists.txt.
