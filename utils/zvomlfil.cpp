// The frame of ZVOMLFile: how one run begins and ends, and what lives from one to the next.
#include "utils/zvomlfil.h"

#include <algorithm>
#include <new>
#include <utility>

#include "utils/zvidxhsh.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"
#include "utils/zvstrpoo.h"

namespace {

constexpr int32_t HASH_DIVISOR = 8;
constexpr int32_t HASH_ERROR_VALUE = 0;

void clearText(char* buffer) {
  if (buffer) *buffer = '\0';
}

}  // namespace

ZV_DEFINE_NO_COPY(ZVOMLFile)

ZVOMLArena::~ZVOMLArena() {
  for (void* page : pages_) zvplatform::releaseLargePage(page);
}

bool ZVOMLArena::nextBlock(size_t size) {
  // Allocators give larger ones back to the system at once, and every page of the next one is cleared anew.
  constexpr size_t LARGEST_BLOCK = 124 << 10;
  // More than this is likely to go back to the system with the rest of the tree.
  constexpr size_t MOST_IN_BLOCKS = size_t{32} << 20;
  const bool large = inBlocks_ >= MOST_IN_BLOCKS && size <= zvplatform::LARGE_PAGE;
  left_ = large ? zvplatform::LARGE_PAGE : std::max(size, blockSize_);
  if (large) {
    pages_.push_back(nullptr);
    next_ = static_cast<std::byte*>(pages_.back() = zvplatform::obtainLargePage());
  } else {
    blocks_.push_back(std::unique_ptr<std::byte[]>(new (std::nothrow) std::byte[left_]));
    next_ = blocks_.back().get();
    inBlocks_ += left_;
    blockSize_ = std::min(2 * blockSize_, LARGEST_BLOCK);
  }
  if (!next_) left_ = 0;
  return next_;
}

ZVOMLFile::Remains::~Remains() {
  for (ZVObject* object : objects) delete object;
  for (ZVOMLSyntaxObject* tree : trees) delete tree;
  for (ZVStringPool* pool : pools) delete pool;
}

ZVOMLFile::ZVOMLFile() = default;

ZVOMLFile::~ZVOMLFile() {
  delete indexHashTable_;
  delete[] std::exchange(errorStringBuffer_, nullptr);
  delete[] std::exchange(warningStringBuffer_, nullptr);
  ZVOMLFile::cleanup();
  releaseTree();
  releaseRemains();
  while (freeBrackets_) ::operator delete(std::exchange(freeBrackets_, freeBrackets_->next));
  while (freeTokens_) ::operator delete(std::exchange(freeTokens_, *static_cast<void**>(freeTokens_)));
}

void ZVOMLFile::initParser(ZVOMLStatic* grammar, ZVObject* expected, int32_t expectedType, int keepIDs) {
  grammar_ = grammar;
  auxCLIBuffer_ = nullptr;
  numberOfErrors_ = 0;
  numberOfWarnings_ = 0;
  indent_ = 0;
  oneline_ = 0;
  inUncheckedSection_ = 0;
  clearFatalError();
  errorCode(ZV_FILE_OK);
  clearText(errorStringBuffer_);
  clearText(warningStringBuffer_);

  cleanup();
  releaseTree();
  if (runDepth_ == 0) releaseRemains();
  pTopLevelObject(nullptr, -1);
  pExpectedTopLevelObject(expected, expectedType);

  if (grammar_) makePools();
  if (!keepIDs) {
    delete std::exchange(indexHashTable_, nullptr);
  } else if (!indexHashTable_) {
    indexHashTable_ =
        new ZVIndexHashTable(grammar_ ? grammar_->objectIDHashSize() : 1, HASH_DIVISOR, HASH_ERROR_VALUE);
  }
}

void ZVOMLFile::makePools() {
  const ZVOMLStatic& g = *grammar_;
  stringPool_ = new ZVStringPool(g.stringHashSize(), g.stringPoolSize(), 1, 0);
  unknownSectionIDPool_ = new ZVStringPool(g.sectionIDHashSize(), g.sectionIDPoolSize(), 0, 0);
  unknownFieldIDPool_ = new ZVStringPool(g.fieldIDHashSize(), g.fieldIDPoolSize(), 0, 0);
  uncheckedFieldIDPool_ = new ZVStringPool(g.fieldIDHashSize(), g.fieldIDPoolSize(), 0, 0);
  objectIDPool_ = new ZVStringPool(g.objectIDHashSize(), g.objectIDPoolSize(), 1, 1);
  ids_ = std::make_unique<ZVOMLIDTable>(*objectIDPool_);
  storeObjectIDIndex("defaults");
}

void ZVOMLFile::cleanup() {
  while (openFiles_) popFile();
  while (brackets_) popBracket(' ', -1, -1, 0);
  bracketLevel_ = 0;
  bracketSkipLevel_ = -1;
  ignoreField_ = 0;
  lookAhead_.reset();
  forgetNames();
  releasePools();
  if (numberOfErrors_ > 0) {
    if (topLevelObject_ && topLevelObject_ != expectedTopLevelObject_ && !topObjectGiven_) {
      remains().objects.push_back(topLevelObject_);
    }
    pTopLevelObject(nullptr, -1);
    releaseTree();
  }
  auxCLIBuffer_ = nullptr;
  if (runDepth_ == 0) releaseRemains();
}

void ZVOMLFile::releasePools() {
  for (ZVStringPool** pool :
       {&stringPool_, &unknownSectionIDPool_, &unknownFieldIDPool_, &uncheckedFieldIDPool_, &objectIDPool_}) {
    if (*pool) remains().pools.push_back(std::exchange(*pool, nullptr));
  }
  if (ids_) remains().ids.push_back(std::move(ids_));
}

void ZVOMLFile::releaseTree() {
  if (syntaxTree_) remains().trees.push_back(std::exchange(syntaxTree_, nullptr));
  for (auto* arena : {&objectNodes_, &fieldNodes_})
    if (*arena) remains().arenas.push_back(std::move(*arena));
}

ZVOMLFile::Remains& ZVOMLFile::remains() {
  if (!remains_) remains_ = new Remains;
  return *remains_;
}

void ZVOMLFile::releaseRemains() { delete std::exchange(remains_, nullptr); }

ZVObject* ZVOMLFile::pTopLevelObject(ZVObject* object, int32_t type) {
  topLevelObjectIDIndex_ = type;
  topObjectGiven_ = false;
  return topLevelObject_ = object;
}

ZVObject* ZVOMLFile::pExpectedTopLevelObject(ZVObject* object, int32_t type) {
  expectedTopLevelObjTypeIDIndex_ = type;
  return expectedTopLevelObject_ = object;
}

int32_t ZVOMLFile::sizeOf() const {
  return ZVTextFile::sizeOf() + static_cast<int32_t>(sizeof(ZVOMLFile) - sizeof(ZVTextFile));
}

// Hooks for the layers above.
void ZVOMLFile::debugOutputToken(ZVOMLToken*) {}
void ZVOMLFile::debugOutputField(ZVOMLSyntaxField*) {}
void ZVOMLFile::debugOutputObject(ZVOMLSyntaxObject*) {}
