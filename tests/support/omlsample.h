// A grammar with every kind of field, and with sections whose names clash, nest and stand deep.
#ifndef ZV_TESTS_OMLSAMPLE_H
#define ZV_TESTS_OMLSAMPLE_H

#include <memory>

#include "tests/support/rows.h"

inline ZVOMLStatic& sampleGrammar() {
  static constexpr const char* TYPES[] = {"graph", "node", "edge", "point", "strict", nullptr};
  static constexpr ZVOMLStaticVEStruct VALUES[] = {{"left", 10}, {"right", 20}, {"up", 30}, {nullptr, 0}};
  static const std::unique_ptr<ZVOMLStatic> grammar = compileRows(
      TYPES, nullptr, VALUES,
      "O $toplevel$; {; T graph; F version I; };"
      "O graph; {; F width I; F scale R; F label S; F visible B; E side [ left right ]; R source node;"
      "  F address P; F data X; T node; T edge; T point; T strict;"
      "  S layout; {; F spacing I; F bends I; T node;"
      "    S horizontal; {; F spacing I; F gap R; S deep; {; F spacing I; F note S; }; };"
      "    S vertical; {; F spacing I; F gap I; }; };"
      "  S extra; {; F spacing I; S horizontal; {; F only I; }; }; };"
      "O node; {; F x I; F y I; R peer node; T node; S layout; {; F spacing I; T node; }; };"
      "O point; {; F x I; F y I; };"
      "O strict; {; F must I R; S layout; {; F must S R; }; };");
  return *grammar;
}

#endif
