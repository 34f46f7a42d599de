// The reader of JSON: any text is a tree, which can be gone through and let go.

#include "host/documents/JsonText.h"
#include "fuzz/ReadTree.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    RequireTree(IndexJson, data, size);
    return 0;
}
