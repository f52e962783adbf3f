// A file that holds one drawing, in the text or the binary form.
#ifndef NETDRAW_NETFILE_H
#define NETDRAW_NETFILE_H

#include <memory>
#include <optional>
#include <string>

#include "examples/netdraw/netfacto.h"
#include "examples/netdraw/netmodel.h"
#include "examples/netdraw/netnotes.h"
#include "examples/netdraw/netresrc.h"
#include "examples/netdraw/nettrace.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlsta.h"

enum class Form { TEXT, BINARY };

const char* nameOf(Form form);
// The form that a file seems to have by how it begins; none if it is no regular file, or empty.
std::optional<Form> seemingForm(const std::string& path);

// What became of a file, as in "it cannot be opened".
const char* inWords(ZVFileCodeEnum code);

// The grammar of these files.
class NetGrammar : public ZVOMLStatic {
 public:
  NetGrammar();
};

// Reads and writes drawings. The ids of a file that was read are kept for the drawings that this object
// writes afterwards.
class NetFile : public ZVOMLFile {
 public:
  // The factory makes the drawings that are read.
  NetFile(NetFactory& factory, Trace& trace);

  // Null if the file has errors; the messages tell them.
  std::unique_ptr<NetGraph> read(const std::string& path, Form form);
  // ZV_FILE_OK only if the file is whole on the disk.
  ZVFileCodeEnum write(const std::string& path, Form form, NetGraph& graph);

  // What the last run had to say, errors first, a line each.
  std::string messages() const;
  ZVFileCodeEnum code() const { return code_; }
  NetFactory& factory() const { return factory_; }

 protected:
  void vWriteContents(ZVObject* top) override;
  int vCheckObject(ZVOMLSyntaxObject* object) override;
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                          ZVObject* owner) override;
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) override;

 private:
  void traceRun(const char* what, const std::string& path, Form form);

  NetFactory& factory_;
  Trace& trace_;
  NetNotes notes_{this};
  NetResources resources_{this};
  ZVFileCodeEnum code_ = ZV_FILE_OK;
};

#endif
