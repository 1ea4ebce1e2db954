#include "fuzz/seeds.h"

std::vector<dax::fuzz::Seed> dax::fuzz::seeds() {
  return {{"commas", "x,y\n1,2.5\n-3e-4,0x10\n\n# end\n"},
          {"marked", "\xEF\xBB\xBF\"a\";\"b\"\r\n1;2;3\r\n"},
          {"blanks", "1 2  3 4 5\n6 7 nan 9 1e999\n"}};
}
