#include "utils/zvomldef.h"

#include <bit>

namespace {

constexpr int MAX_SECTIONS = 14;  // of one parent: digit 15 is the wildcard
constexpr int MAX_LEVELS = 8;

int pathDepth(uint32_t path) { return (static_cast<int>(std::bit_width(path)) + 3) / 4; }

// The bits of the first levels of a path.
uint32_t prefixMask(int levels) { return levels < MAX_LEVELS ? (1U << 4 * levels) - 1 : 0xffffffffU; }

// The next section in depth first order that does not lie below this one; null when the list below root, or
// of the first level if root is null, is at its end.
ZVOMLDefSection* followingSection(const ZVOMLDefSection* section, const ZVOMLDefSection* root) {
  while (section != root && !section->pNext()) section = section->pParent();
  return section == root ? nullptr : section->pNext();
}

// From this section on, the first one as deep as the path and equal to it under the mask.
ZVOMLDefSection* seekSectionPath(ZVOMLDefSection* section, const ZVOMLDefSection* root, uint32_t path,
                                 uint32_t mask) {
  const int depth = pathDepth(path);
  while (section) {
    const int level = pathDepth(section->sectionPathIndex());
    const bool fits = ((section->sectionPathIndex() ^ path) & mask & prefixMask(level)) == 0;
    if (fits && level == depth) return section;
    if (fits && level < depth && section->pSectionList()) {
      section = section->pSectionList();
    } else {
      section = followingSection(section, root);
    }
  }
  return nullptr;
}

bool sameValues(const ZVOMLDefIndexList* first, const ZVOMLDefIndexList* second) {
  while (first && second && first->index == second->index) {
    first = first->next;
    second = second->next;
  }
  return !first && !second;
}

bool sameDefinition(const ZVOMLDefField& first, const ZVOMLDefField& second) {
  if (first.fieldType() != second.fieldType()) return false;
  switch (first.fieldType()) {
    case ZV_FIELD_OBJECT:
      return first.objTypeIDIndex() == second.objTypeIDIndex();
    case ZV_FIELD_ENUM:
      return sameValues(first.pValueIDIndexList(), second.pValueIDIndexList());
    default:
      return true;
  }
}

template <class Cell>
void deleteChain(Cell* cell) {
  while (cell) {
    Cell* next = cell->pNext();
    delete cell;
    cell = next;
  }
}

}  // namespace

ZVOMLDefField::ZVOMLDefField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType, ZVOMLDefIndexList* list,
                             int required, int position, ZVOMLDefField* next)
    : fieldIDIndex_(fieldIDIndex),
      fieldType_(fieldType),
      pValueIDIndexList_(list),
      required_(required != 0),
      position_(static_cast<int16_t>(position)),
      pNext_(next) {}

ZVOMLDefField::~ZVOMLDefField() {
  while (pValueIDIndexList_) {
    ZVOMLDefIndexList* next = pValueIDIndexList_->next;
    delete pValueIDIndexList_;
    pValueIDIndexList_ = next;
  }
}

void ZVOMLDefField::addEnumValue(int32_t index) {
  pValueIDIndexList_ = new ZVOMLDefIndexList{index, pValueIDIndexList_};
}

int32_t ZVOMLDefField::objTypeIDIndex(int32_t index) {
  if (pValueIDIndexList_) {
    pValueIDIndexList_->index = index;
  } else {
    addEnumValue(index);
  }
  return index;
}

ZVOMLDefContent::~ZVOMLDefContent() {
  deleteChain(pFieldList);
  deleteChain(pSectionList);
  deleteChain(pObjTypeList);
}

ZVOMLDefField* ZVOMLDefContent::findField(int32_t fieldIDIndex) const {
  ZVOMLDefField* field = pFieldList;
  while (field && field->fieldIDIndex() != fieldIDIndex) field = field->pNext();
  return field;
}

ZVOMLDefField* ZVOMLDefContent::findNthField(int32_t n) const {
  ZVOMLDefField* field = pFieldList;
  while (field && field->position() != n) field = field->pNext();
  return field;
}

ZVOMLDefObjTypeIndex* ZVOMLDefContent::findObjType(int32_t objTypeIDIndex) const {
  ZVOMLDefObjTypeIndex* cell = pObjTypeList;
  while (cell && cell->objTypeIDIndex() != objTypeIDIndex) cell = cell->pNext();
  return cell;
}

ZVOMLDefSection* ZVOMLDefContent::findSection(int32_t sectionIDIndex) const {
  ZVOMLDefSection* section = pSectionList;
  while (section && section->sectionIDIndex() != sectionIDIndex) section = section->pNext();
  return section;
}

uint32_t ZVOMLDefContent::findUniqueSection(int32_t sectionIDIndex) const {
  const uint32_t path = pSectionList ? pSectionList->testUniqueSection(sectionIDIndex) : 0;
  return path == 15 ? 0 : path;
}

ZVOMLDefField* ZVOMLDefContent::addField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType, int required,
                                         ZVOMLDefObjType* objType) {
  ZVOMLDefField* field = findField(fieldIDIndex);
  if (!field) {
    const int position = pFieldList ? pFieldList->position() + 1 : 1;
    field = new ZVOMLDefField(fieldIDIndex, fieldType, nullptr, required, position, pFieldList);
    pFieldList = field;
  } else if (field->fieldType() != fieldType || field->required() != (required != 0)) {
    return nullptr;
  }
  if (field->required() && objType) objType->addRequiredField(field);
  return field;
}

ZVOMLDefObjTypeIndex* ZVOMLDefContent::addObjType(int32_t objTypeIDIndex) {
  if (ZVOMLDefObjTypeIndex* cell = findObjType(objTypeIDIndex)) return cell;
  return pObjTypeList = new ZVOMLDefObjTypeIndex(objTypeIDIndex, pObjTypeList);
}

ZVOMLDefSection* ZVOMLDefContent::addSection(int32_t sectionIDIndex, ZVOMLDefSection* parent) {
  if (ZVOMLDefSection* section = findSection(sectionIDIndex)) return section;
  int number = 1;
  for (const ZVOMLDefSection* sibling = pSectionList; sibling; sibling = sibling->pNext()) ++number;
  if (number > MAX_SECTIONS) return nullptr;
  const uint32_t path = parent ? parent->newSectionPathIndex(number) : static_cast<uint32_t>(number);
  if (path == 0) return nullptr;
  return pSectionList = new ZVOMLDefSection(sectionIDIndex, path, pSectionList, parent);
}

uint32_t ZVOMLDefSection::findSection(int32_t sectionIDIndex) const {
  const ZVOMLDefSection* section = content_.findSection(sectionIDIndex);
  return section ? section->sectionPathIndex() : 0;
}

ZVOMLDefSection* ZVOMLDefSection::findSectionPath(uint32_t path) {
  return seekSectionPath(this, pParent_, path, 0xffffffffU);
}

uint32_t ZVOMLDefSection::testUniqueSection(int32_t sectionIDIndex) const {
  uint32_t found = 0;
  for (const ZVOMLDefSection* section = this; section; section = section->pNext_) {
    const uint32_t own = section->sectionIDIndex_ == sectionIDIndex ? section->sectionPathIndex_ : 0;
    const ZVOMLDefSection* children = section->content_.pSectionList;
    const uint32_t below = children ? children->testUniqueSection(sectionIDIndex) : 0;
    if ((found != 0) + (own != 0) + (below != 0) > 1) return 15;
    if (own != 0) found = own;
    if (below != 0) found = below;
  }
  return found;
}

uint32_t ZVOMLDefSection::newSectionPathIndex(int32_t n) const {
  const int depth = pathDepth(sectionPathIndex_);
  if (depth >= MAX_LEVELS) return 0;
  return sectionPathIndex_ | (static_cast<uint32_t>(n) & 15U) << 4 * depth;
}

ZVOMLDefField* ZVOMLDefObjType::findFieldInAllSections(uint32_t path, int32_t fieldIDIndex) const {
  if (path == 0) return findField(fieldIDIndex);
  const uint32_t mask = wildCardMask(path);
  ZVOMLDefField* first = nullptr;
  for (ZVOMLDefSection* section = findFirstSectionPath(path, mask); section;
       section = findNextSectionPath(path, mask, section)) {
    ZVOMLDefField* field = section->findField(fieldIDIndex);
    if (!field) continue;
    if (!first) {
      first = field;
    } else if (!sameDefinition(*first, *field)) {
      return nullptr;
    }
  }
  return first;
}

uint32_t ZVOMLDefObjType::findSection(int32_t sectionIDIndex) const {
  const ZVOMLDefSection* section = content_.findSection(sectionIDIndex);
  return section ? section->sectionPathIndex() : 0;
}

ZVOMLDefSection* ZVOMLDefObjType::findSectionPath(uint32_t path) const {
  return content_.pSectionList ? content_.pSectionList->findSectionPath(path) : nullptr;
}

ZVOMLDefSection* ZVOMLDefObjType::findFirstSectionPath(uint32_t path, uint32_t mask) const {
  return seekSectionPath(content_.pSectionList, nullptr, path, mask);
}

ZVOMLDefSection* ZVOMLDefObjType::findNextSectionPath(uint32_t path, uint32_t mask,
                                                      ZVOMLDefSection* section) const {
  return seekSectionPath(followingSection(section, nullptr), nullptr, path, mask);
}

uint32_t ZVOMLDefObjType::wildCardMask(uint32_t path) {
  const uint32_t wildCards = path & path >> 1 & path >> 2 & path >> 3 & 0x11111111U;
  return ~(wildCards * 15);
}

void ZVOMLDefObjType::addRequiredField(ZVOMLDefField* field) {
  const ZVOMLDefField* listed = pRequiredFieldList_;
  while (listed && listed != field) listed = listed->pNextRequired();
  if (listed) return;
  field->pNextRequired(pRequiredFieldList_);
  pRequiredFieldList_ = field;
}
