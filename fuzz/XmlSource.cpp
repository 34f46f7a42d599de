// The reader of XML: any text is a tree, which can be gone through and let go.

#include "host/documents/XmlText.h"
#include "fuzz/ReadTree.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    RequireTree(IndexXml, data, size);
    return 0;
}
