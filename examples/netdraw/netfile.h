// A file that holds one drawing, in the text or the binary form.
#ifndef NETDRAW_NETFILE_H
#define NETDRAW_NETFILE_H

#include <memory>
#include <string>

#include "examples/netdraw/netmodel.h"
#include "examples/netdraw/netnotes.h"
#include "examples/netdraw/nettrace.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlsta.h"

enum class Form { TEXT, BINARY };

const char* nameOf(Form form);

// The grammar of these files. Build one and let all files use it.
class NetGrammar : public ZVOMLStatic {
 public:
  NetGrammar();
};

// Reads and writes drawings. The ids of a file that was read are kept for the drawings that this object
// writes afterwards.
class NetFile : public ZVOMLFile {
 public:
  NetFile(NetGrammar& grammar, Trace& trace);

  // Null if the file has errors; the messages tell them.
  std::unique_ptr<NetGraph> read(const std::string& path, Form form);
  // ZV_FILE_OK only if the file is whole on the disk.
  ZVFileCodeEnum write(const std::string& path, Form form, NetGraph& graph);

  // What the last run had to say, errors first, a line each.
  std::string messages() const;
  ZVFileCodeEnum code() const { return code_; }

 protected:
  void vWriteContents(ZVObject* top) override;
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                          ZVObject* owner) override;
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) override;

 private:
  void traceRun(const char* what, const std::string& path, Form form);

  NetGrammar& grammar_;
  Trace& trace_;
  NetNotes notes_{this};
  ZVFileCodeEnum code_ = ZV_FILE_OK;
};

#endif
