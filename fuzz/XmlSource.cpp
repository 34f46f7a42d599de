// The reader of XML: any text is a tree, which can be gone through and let go.

#include "fuzz/ReadTree.h"
#include "host/documents/XmlText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    RequireTree(IndexXml, data, size);
    return 0;
}
