// The reader of JSON: any text is a tree, which can be gone through and let go.

#include "fuzz/ReadTree.h"
#include "host/documents/JsonText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    RequireTree(IndexJson, data, size);
    return 0;
}
