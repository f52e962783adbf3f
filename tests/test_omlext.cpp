#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "tests/support/omlsample.h"
#include "utils/zvomlbva.h"
#include "utils/zvomlext.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlobj.h"
#include "utils/zvomltup.h"

namespace {

struct Part : ZVOMLObject {
  ZVOMLObject* pOwnerObject() override { return owner; }

  ZVOMLObject* owner = nullptr;
};

// A kind of file that leaves its contents to its extension, and counts its deaths.
struct HostFile : ZVOMLFile {
  static inline int gone = 0;

  ~HostFile() override { ++gone; }

 protected:
  void vWriteContents(ZVObject* top) override { pOMLExtension()->vWriteContents(top); }
};

// Writes by every operation there is.
struct Companion : ZVOMLExtension {
  using ZVOMLExtension::errorMessage;
  using ZVOMLExtension::numberOfErrors;
  using ZVOMLExtension::numberOfWarnings;
  using ZVOMLExtension::warningMessage;

  Part graph{};
  Part node{};

  void vWriteContents(ZVObject*) override {
    const ZVOMLBinValue bytes(2, "\x01\xff");
    node.owner = &graph;
    graph.iUserField(1);
    node.iUserField(7);
    writeObjectStart("graph", &graph, 0, 1);
    writeOpeningBracket();
    writeAttribute("width", 1L);
    writeAttribute("scale", 0.5F);
    writeAttribute("scale", 1.5);
    writeStringAttribute("label", "a \"b\"");
    writeBoolAttribute("visible", 1);
    writeAttribute("side", "left");
    writeIPBytesAttribute("address", 0x01020304);
    writeAttribute("data", &bytes);
    writeAttribute("data", nullptr);
    writeAttribute("source", &node, &graph, 1);
    writeSectionStart("layout", 1);
    writeOpeningBracket();
    writeAttribute("spacing", 2);
    writeClosingBracket();
    writeBlancLine();
    writeObjectDefaultStart("node");
    writeOpeningBracket();
    writeAttribute("x", 5);
    writeObjectStart("node", &node, 1, 1);
    writeOpeningBracket();
    writeClosingBracket();
    writeClosingBracket();
    writeObjectStart("point", nullptr, 1);
    writeOpeningBracket();
    writeClosingBracket();
    writeClosingBracket();
  }

 protected:
  ZVOMLFile* vNewOwnedOMLFile() override {
    auto* file = new HostFile;
    file->pOMLExtension(this);
    return file;
  }
};

TEST(OmlExtension, WritesAFileInThePlaceOfItsHost) {
  Companion companion;
  ZVOMLFile* file = companion.pOMLFile(companion.pOwnedOMLFile());
  ASSERT_EQ(file->writeOMLFile("extension.oml", &sampleGrammar(), nullptr, 0, 0, 0), ZV_FILE_OK);
  std::ifstream in("extension.oml", std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}),
            "graph: 1\r\n{\r\n\twidth: 1\r\n\tscale: 0.500000\r\n\tscale: 1.500000\r\n"
            "\tlabel: \"a \\\"b\\\"\"\r\n\tvisible: true\r\n\tside: left\r\n\taddress: 1.2.3.4\r\n"
            "\tdata: 0x01ff\r\n\tsource: $1,7\r\n\tlayout:  { spacing: 2 }\r\n"
            "\r\n\tnode: defaults\r\n\t{\r\n\t\tx: 5\r\n\t\tnode: 7 { }\r\n\t}\r\n\tpoint: { }\r\n}\r\n");
}

TEST(OmlExtension, PassesMessagesOnAndIsSilentWithoutAFile) {
  ZVOMLFile file;
  Companion companion;
  for (ZVOMLFile* target : {static_cast<ZVOMLFile*>(nullptr), &file}) {
    companion.pOMLFile(target);
    companion.errorMessage(nullptr, 3, "wrong", 0);
    companion.warningMessage(nullptr, 3, "odd");
    companion.warningMessage(nullptr, 3, "odd");
    EXPECT_EQ(companion.numberOfErrors(), target ? 1 : 0);
    EXPECT_EQ(companion.numberOfWarnings(), target ? 2 : 0);
    if (!target) companion.vWriteContents(nullptr);
  }
  EXPECT_EQ(companion.vCheckObject(nullptr) + companion.vReadField(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(companion.vCreateObject(nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(file.numberOfWarnings(), 2);
  EXPECT_EQ(companion.pQueryOwnedOMLFile(), nullptr);
}

TEST(OmlExtension, OwnsTheFileThatItMadeAndNoOther) {
  ZVOMLFile outside;
  Companion companion;
  companion.pOMLFile(&outside);
  for (int kind : {ZV_DEEP_COPY, ZV_ATTRIBUTE_COPY}) {
    const int32_t size = companion.sizeOf();
    ZVOMLFile* own = companion.pOwnedOMLFile();
    EXPECT_EQ(own->pOMLExtension(), &companion);
    EXPECT_EQ(companion.pOwnedOMLFile(), own);
    EXPECT_EQ(companion.pQueryOwnedOMLFile(), own);
    EXPECT_EQ(companion.sizeOf(), size + own->sizeOf());
    EXPECT_EQ(companion.pOMLFile(), &outside);

    ZVOMLExtension copy(companion, static_cast<ZVDeepFlagEnum>(kind));
    EXPECT_EQ(copy.pOMLFile(), nullptr);
    EXPECT_EQ(copy.pQueryOwnedOMLFile(), nullptr);
    EXPECT_EQ(copy.pOwnedOMLFile()->pOMLExtension(), &copy);
    HostFile::gone = 0;
    kind == ZV_DEEP_COPY ? companion.copyObject(&copy) : companion.copyAttributes(&copy);
    EXPECT_EQ(HostFile::gone, 1);
    EXPECT_EQ(companion.pQueryOwnedOMLFile(), nullptr);
    EXPECT_EQ(companion.pOMLFile(), &outside);
  }
  // A file that is gone is not worked on.
  companion.pOMLFile(companion.pOwnedOMLFile());
  companion = Companion();
  EXPECT_EQ(companion.pOMLFile(), nullptr);
}

TEST(OmlObjectTuple, SharesItsObjectsWithItsCopies) {
  Part first;
  Part second;
  ZVOMLObjectTuple none;
  EXPECT_EQ(none.pFirstObject(), nullptr);
  EXPECT_EQ(none.pSecondObject(), nullptr);
  ZVOMLObjectTuple tuple(&first, &second);
  std::unique_ptr<ZVOMLObjectTuple> clone(tuple.cloneObject());
  EXPECT_EQ(clone->pFirstObject(), &first);
  EXPECT_EQ(clone->pSecondObject(), &second);
}

}  // namespace
