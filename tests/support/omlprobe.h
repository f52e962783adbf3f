// A ZVOMLFile whose inside a test can look at, and the printed form of its syntax tree.
#ifndef ZV_TESTS_OMLPROBE_H
#define ZV_TESTS_OMLPROBE_H

#include <cstdio>
#include <sstream>
#include <string>

#include "tests/support/files.h"
#include "utils/zverrmsg.h"
#include "utils/zvomlbva.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"
#include "utils/zvstrpoo.h"

// The messages that a short form stands for: one line for each, with its number, its place (- for none, in
// f.oml if no file is named), and what fills the blanks of its text, for message 24 the number of that text.
inline std::string fullMessages(const char* shortForm) {
  std::string messages;
  std::istringstream lines(shortForm);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    int id = 0;
    std::string place;
    std::string argument;
    words >> id >> place;
    std::string text = getStringResource(id);
    while (words >> argument) {
      if (id == 24) argument = getStringResource(std::stoi(argument));
      text.replace(text.find("%s"), 2, argument);
    }
    messages += id >= 49 ? "Warning #0" : id == 13 || id == 32 || id == 33 ? "Fatal error #0" : "Error #0";
    messages += std::to_string(id);
    if (place != "-") {
      messages += place.find("oml") == std::string::npos ? " (f.oml:" : " (";
      messages += place + ')';
    }
    messages += ' ' + text + " !\n";
  }
  return messages;
}

class ZVOMLFileProbe : public ZVOMLFile {
 public:
  ZVOMLFileProbe() {
    pErrorStringBuffer(1 << 20);
    pWarningStringBuffer(1 << 20);
  }

  // Whether plain fields may go the short way.
  void shortWay(bool allowed) { shortWay_ = allowed; }

  std::string messages() const { return std::string(pErrorStringBuffer()) + pWarningStringBuffer(); }

  // The first phase alone. look receives the tree, null after errors, while its texts are there.
  template <class Look>
  void parseTree(const char* path, ZVOMLStatic& grammar, Look look, int binary = 0) {
    work(grammar, binary, [&] {
      parse(path);
      look(pSyntaxTree());
    });
  }

  // The tokens alone. look receives each in turn, while the names are there.
  template <class Look>
  void readTokens(const char* path, ZVOMLStatic& grammar, Look look, int binary = 0) {
    work(grammar, binary, [&] {
      pushFile(path);
      while (TokenPtr token = nextToken()) look(token.get());
    });
  }

  // The path that a section name at the end of path leads to, and the message that comes with it.
  uint32_t sectionPath(ZVOMLStatic& grammar, int32_t type, uint32_t path, const char* section,
                       std::string& message) {
    uint32_t result = 0;
    work(grammar, 0, [&] {
      ZVOMLToken token(ZV_OML_SECTION_ID, sectionIDIndex(section), 1, 1);
      result = extendSectionPath(storeStringIndex("f.oml"), &token, type, path);
      message = pErrorStringBuffer();
    });
    return result;
  }

  ZVOMLDefObjType* definition(ZVOMLStatic& grammar, int32_t type) {
    ZVOMLDefObjType* result = nullptr;
    work(grammar, 0, [&] { result = pObjTypeDefinition(type); });
    return result;
  }

  // All tokens, each with a blank behind it.
  std::string printTokens(const char* path, ZVOMLStatic& grammar, int binary = 0) {
    std::string text;
    readTokens(
        path, grammar, [&](ZVOMLToken* token) { text += printKind(token) + ' '; }, binary);
    return text;
  }

  // The tokens of a text in memory, which is used up.
  std::string printMemoryTokens(ZVStringHandle& buffer, ZVOMLStatic& grammar) {
    std::string text;
    work(grammar, 0, [&] {
      auxCLIBuffer_ = &buffer;
      while (TokenPtr token = nextToken()) text += printKind(token.get()) + ' ';
    });
    return text;
  }

  std::string printKind(ZVOMLToken* token) {
    static const char* const KINDS[] = {"",       "",      "",         "",       "",   "",
                                        "value ", "type ", "section ", "field ", "id "};
    switch (token->tag()) {
      case ZV_OML_LEFT_BRACKET:
      case ZV_OML_RIGHT_BRACKET:
      case ZV_OML_ASSIGN:
      case ZV_OML_SEPARATOR:
        return {token->charValue()};
      case ZV_OML_BAD:
        return std::string("bad ") + std::to_string(token->longValue());
      case ZV_OML_REAL:
        return std::string("real ") + print(token);
      case ZV_OML_INTEGER:
      case ZV_OML_STRING:
      case ZV_OML_IPBYTES:
      case ZV_OML_BINVALUE:
        return print(token);
      default:
        return (token->isUnknownField() ? "unknown " : KINDS[token->tag()]) +
               std::string(decodeIdeToken(token));
    }
  }

  // NAME/path[SECTION]?!=value@line:position, where ? stands for no definition and ! for unchecked.
  std::string print(const ZVOMLSyntaxField* field) {
    std::string text = field->nameString() + printPlace(field->sectionPathIndex(), field->sectionString());
    if (!field->pDefField()) text += '?';
    if (field->inUncheckedSection()) text += '!';
    return text + '=' + print(field->pValueToken()) + printPosition(field);
  }

  // TYPE:id/path[SECTION]@line:position{fields objects}
  std::string print(const ZVOMLSyntaxObject* object) {
    std::string text = object->typeString();
    if (object->objectIDIndex() >= 0) text += std::string(":") + object->nameString();
    text += printPlace(object->sectionPathIndex(), object->sectionString()) + printPosition(object) + "{";
    for (auto* cell = object->pFieldList(); cell; cell = cell->pNext) text += print(cell->pField) + ' ';
    for (auto* cell = object->pObjectList(); cell; cell = cell->pNext) {
      text += print(cell->pObject) + ' ';
      if (cell->pObject->pOwnerObject() != object) text += "(owned by another) ";
      if (!cell->pNext && cell != object->pObjectListEnd()) text += "(wrong end) ";
    }
    if (text.back() == ' ') text.pop_back();
    return text + '}';
  }

 private:
  // Inside a run over a file of that form.
  template <class Work>
  void work(ZVOMLStatic& grammar, int binary, Work inside) {
    saveMode(binary ? ZV_FILE_READ_BINARY : ZV_FILE_READ);
    initParser(&grammar, nullptr, -1, 0);
    Run run(*this);
    inside();
    cleanup();
  }

  static std::string printPlace(uint32_t path, const char* section) {
    char text[20] = "";
    if (path != 0 || *section) std::snprintf(text, sizeof text, "/%x", static_cast<unsigned>(path));
    return *section ? std::string(text) + '[' + section + ']' : text;
  }

  static std::string printPosition(const ZVOMLSyntaxStruct* node) {
    return '@' + std::to_string(node->line()) + ':' + std::to_string(node->position());
  }

  std::string print(ZVOMLToken* token) {
    char text[40] = "-";
    if (!token) return text;
    switch (token->tag()) {
      case ZV_OML_INTEGER:
        return std::to_string(token->longValue());
      case ZV_OML_REAL:
        std::snprintf(text, sizeof text, "%.17g", token->doubleValue());
        return text;
      case ZV_OML_IPBYTES:
        std::snprintf(text, sizeof text, "ip%08x", static_cast<unsigned>(token->ipbytesValue()));
        return text;
      case ZV_OML_BINVALUE: {
        std::string bytes = "0x";
        for (int32_t i = 0; i < token->pBinValue()->length(); ++i) {
          std::snprintf(text, sizeof text, "%02x",
                        static_cast<unsigned char>(token->pBinValue()->pByteSequence()[i]));
          bytes += text;
        }
        return bytes;
      }
      case ZV_OML_STRING:
        return std::string("\"") + decodeIdeToken(token) + '"';
      default:
        return std::to_string(token->tag()) + decodeIdeToken(token);
    }
  }
};

#endif
