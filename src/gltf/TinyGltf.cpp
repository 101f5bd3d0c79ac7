// The library that writes glTF is a header, which is compiled here.

#define TINYGLTF_IMPLEMENTATION
#include <tiny_gltf.h>
