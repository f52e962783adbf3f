// A program of somebody else: it knows the installed package and nothing of this source tree.
#include "utils/zvutils.h"

int main() {
  ZVInt number(5);
  ZVInt* clone = number.cloneObject();
  int wrong = clone->value() != 5 || clone->graphFileID() == number.graphFileID();
  delete clone;
  return wrong + staticReturnNull();
}
