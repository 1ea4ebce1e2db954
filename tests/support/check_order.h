// The order of checks, as a table: each clause spoils the arguments in one way and names the code that must come back.
// All pairs are tried: with clauses i and j broken at once, the earlier one's code wins, and nothing is written.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "dax/status.h"

namespace dax::test {

template <class Arguments>
struct CheckClause {
  const char* name;
  DaxStatus code;
  void (*spoil)(Arguments&);
};

template <class Arguments>
void expectCheckOrder(const Arguments& good, const std::vector<CheckClause<Arguments>>& clauses,
                      const std::function<DaxStatus(const Arguments&)>& call,
                      const std::function<bool()>& outputsUntouched) {
  for (size_t i = 0; i < clauses.size(); ++i) {
    for (size_t j = i; j < clauses.size(); ++j) {
      Arguments bad = good;
      // The later clause first: where both spoil one argument, the earlier one must stand.
      clauses[j].spoil(bad);
      clauses[i].spoil(bad);
      EXPECT_EQ(call(bad), clauses[i].code) << clauses[i].name << " with " << clauses[j].name;
      EXPECT_TRUE(outputsUntouched()) << clauses[i].name << " with " << clauses[j].name;
    }
  }
  EXPECT_EQ(call(good), static_cast<DaxStatus>(DAX_STS_OK));
}

}  // namespace dax::test
