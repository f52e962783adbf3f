#include "utils/zverrmsg.h"

#include <array>

namespace {

constexpr std::array<const char*, 52> MESSAGES = {
    "Error",
    "Fatal error",
    "Warning",
    "something wrong",
    "integer number",
    "string",
    "floating point number",
    "IP address",
    "binary byte sequence",
    "`true' or `false'",
    "too many errors",
    "too many warnings",
    "memory exhausted",
    "cannot open `%s'",
    "cannot close this file",
    "left bracket without right bracket",
    "right bracket without left bracket",
    "unterminated comment",
    "unterminated string",
    "unterminated binary sequence",
    "unexpected token",
    "unexpected field",
    "unexpected identifier `%s'",
    "unexpected attribute value",
    "%s expected",
    "different value type expected",
    "object id expected",
    "`%s' reference expected",
    "reference to undefined object",
    "missing attribute `%s'",
    "object with double id",
    "double defined object of different type",
    "wrong top level object",
    "two top level objects",
    "several semantic errors detected",
    "section `%s' is not direct or unique subsection of `%s'",
    "section `%s' is not direct or unique subsection of this section `%s' of `%s'",
    "section `%s' is not direct or unique subsection of all sections (after wildcard expansion) of `%s'",
    "`%s' is not allowed in `%s'",
    "`%s' is not allowed in this section `%s' of `%s'",
    "`%s' is not allowed in `%s defaults'",
    "`%s' is not allowed in this section `%s' of `%s defaults'",
    "`%s defaults' is not allowed in `%s'",
    "`%s defaults' is not allowed in this section `%s' of `%s'",
    "`%s defaults' is not allowed in `%s defaults'",
    "`%s defaults' is not allowed in this section `%s' of `%s defaults'",
    "field `%s' is not allowed in `%s'",
    "field `%s' is not allowed in this section `%s' or all sections (after wildcard expansion) of `%s'",
    "keyword `%s' not allowed as section containing `%s' (%s)",
    "unable to set fields in several objects",
    "left bracket different than right bracket",
    "right bracket different than left bracket"};

}  // namespace

ZV_DEFINE_FULL(ZVErrorMsg, ZVText)

void ZVErrorMsg::init() {}

void ZVErrorMsg::ZVErrorMsgdeepCopy(const ZVErrorMsg& other) { ZVText::copyObject(&other); }

void ZVErrorMsg::ZVErrorMsgattributeCopy(const ZVErrorMsg& other) { ZVText::copyAttributes(&other); }

void ZVErrorMsg::display() const { zvplatform::showNotice(getStringResource(0), pString()); }

void displayErrorMessage(const char* text) { ZVErrorMsg(text).display(); }

const char* getStringResource(int32_t id) {
  auto index = static_cast<size_t>(id);
  return index < MESSAGES.size() ? MESSAGES[index] : "";
}
