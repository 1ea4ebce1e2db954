// One generated call: the vocabulary in which a row says what the arguments of a function mean.
//
// A row names arguments as the prototype does and gives each a meaning; the call draws a value for it, valid unless the
// argument is one of those to be spoiled, and lays out memory of exactly the size that the contract asks for with these
// values. Memory that the contract does not give, as for an image of negative size, is an address that faults when it is
// touched. Arguments are drawn when they are first asked for, so rows give scalars before what depends on them. What a
// row does not mention gets the meaning that name, type and contract give it (defaults.cpp).
#pragma once

#include <algorithm>
#include <cfloat>
#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "dax/status.h"
#include "tests/hostile/arena.h"
#include "tests/hostile/function.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::hostile {

using test::MockPool;
using test::Random;

enum class Role {
  input,    // no call may change it
  output,   // unchanged after a failure; the same from all twins
  work,     // a work buffer: unchanged after a failure, of no meaning afterwards
  foreign,  // changes as it likes: memory of the host, or results that differ from call to call
};

// A piece of memory that a call receives.
struct Block {
  std::string name;
  uint8_t* data;
  size_t bytes;
  Role role;
  size_t realBytes = 0;  // elements are floats of this size: any NaN is as good as another
  // An image's rows; what lies between them is padding, which no call may change.
  size_t rowBytes = 0, stepBytes = 0;
  std::function<size_t()> meaningful = {};  // how many bytes mean something after success; not set: all
  std::function<void()> tidy = {};          // clears what is between the fields of records, after every call
  bool firm = false;                        // no failure changes it, whatever else it leaves behind
  uint8_t* before = nullptr;
  uint8_t* after = nullptr;
};

// What is wrong with a call: an argument; of one that is or points to a record, with a field above 0, one of its fields.
struct Spoil {
  size_t argument;
  uint32_t field = 0;
  bool done = false;
  bool atLimit = false;  // a number at its limit, with which nothing is wrong
};

class Call {
 public:
  // Spoils up to two arguments, by chance, or exactly what it is told.
  Call(const Function& function, Arena& arena, uint64_t seed);
  Call(const Function& function, Arena& arena, uint64_t seed, std::vector<Spoil> spoils);

  // --- Chance ---
  Random random;
  bool chance(int32_t percent) { return random.below(100) < percent; }
  int64_t between(int64_t low, int64_t high);
  template <class T>
  T pick(std::initializer_list<T> choices) {
    return choices.begin()[random.below(static_cast<int32_t>(choices.size()))];
  }
  int64_t hostileInteger();
  double hostileReal();

  // --- Scalars: drawn once, then the same ---
  int64_t number(const char* name, int64_t low, int64_t high);
  // Valid from low to high, but hardly ever above `usual`.
  int64_t number(const char* name, int64_t low, int64_t high, int64_t usual);
  int64_t anyOf(const char* name, std::initializer_list<int64_t> valid);
  double real(const char* name, double low, double high);
  // Sides from `least` on; small, wide or tall.
  DaxiSize size(const char* name, int32_t min = 1);
  // `valid` unless it is to be spoiled.
  DaxiSize sizeOr(const char* name, DaxiSize valid);

  // --- Memory ---
  // An image and its step: rows of the size's width, the last one without padding.
  void* image(const char* name, const char* step, DaxiSize size, int32_t channels = 1);
  // The same for an array of planes of one step.
  void planes(const char* name, const char* step, DaxiSize size) {
    completePlanes(static_cast<size_t>(index(name)), step, size);
  }
  // An image that may be another one, with the same step.
  void inPlace(const char* name, const char* step, const char* of, const char* stepOf);
  // The same for arrays of one length.
  void inPlace(const char* name, const char* of);
  // Of an output only the first so many bytes mean something after success.
  void onlyMeans(const void* data, std::function<size_t()> bytes) {
    if (Block* const made = block(data)) made->meaningful = std::move(bytes);
  }
  // Of an output nothing means anything.
  void meansNothing(const char* name) {
    onlyMeans(get<void*>(name), [] { return size_t{0}; });
  }
  // Marks an image as one whose pixels are not read: any size can be claimed.
  void notRead(const char* name) { notRead_ = name; }
  // `count` elements of the pointer's type. A negative count gives an address that faults.
  void* array(const char* name, int64_t count);
  // How many elements these sides make; -1 where one of them is below 1.
  static int64_t product(std::initializer_list<int64_t> sides);
  // A work buffer of as many bytes as the query says; an alignment below that of malloc is used.
  void* work(const char* name, const std::function<DaxStatus(uint64_t*)>& query, size_t alignment = 16);
  // An array of floats or doubles with numbers in it.
  template <class Real>
  Real* reals(const char* name, int64_t count) {
    auto* const result = static_cast<Real*>(array(name, count));
    const Own own(*this, name, 3);
    if (const Block* const made = block(result)) fillReals(result, made->bytes / sizeof(Real));
    return result;
  }
  // An array of floats or doubles near these numbers, at times far from them; with one that is NaN or -8 when spoiled.
  void* around(const char* name, const std::vector<double>& numbers, double noise = 0);
  // One record, zeroed; null where the argument is spoiled that way.
  template <class T>
  T* record(const char* name) {
    T* const result = static_cast<T*>(array(name, 1));
    if (result) std::memset(static_cast<void*>(result), 0, sizeof(T));
    return result;
  }
  // A record, or several, with fields within the limits of their comments, then as the row adjusts them, then, when spoiled,
  // with one field that is wrong. Pointers are null unless the row sets them.
  template <class T>
  T* filled(const char* name, int64_t count = 1) {
    return static_cast<T*>(records(name, count, [](void*) {}));
  }
  template <class T, class Adjust>
  T* filled(const char* name, int64_t count, const Adjust& adjust) {
    return static_cast<T*>(records(name, count, [&](void* record) { adjust(*static_cast<T*>(record)); }));
  }
  void* records(const char* name, int64_t count, const std::function<void(void*)>& adjust);
  // Memory that records point to.
  void* memory(const char* name, int64_t bytes, Role role, size_t alignment = 16);
  template <class T>
  T* elements(const char* name, int64_t count, Role role) {
    return static_cast<T*>(memory(name, count * int64_t{sizeof(T)}, role, alignof(T)));
  }
  // Spoils a word of a record between two byte offsets, when its argument is one to be spoiled.
  void spoilWord(const char* name, void* record, size_t from, size_t to);
  // A record of 32-bit words that is passed by value.
  template <class T>
  T given(const char* name, T valid) {
    if (drawn(name)) return get<T>(name);
    spoilWord(name, &valid, 0, sizeof valid);
    set(name, valid);
    spoilFields(name);
    return get<T>(name);
  }
  // The host's pool, or none, and its number of threads where that is an argument.
  void pool();

  Block* block(const void* data);
  Block* blockOf(const char* argument) { return block(get<void*>(argument)); }

  // --- Contents ---
  void fillBytes(void* data, size_t bytes);
  void fillMask(uint8_t* data, size_t bytes);
  // Whole numbers up to 5, multiples of 1/8 up to 40 or 1000, or else wild ones.
  template <class Real>
  void fillReals(Real* data, size_t count) {
    const bool wild = chance(20);
    const int64_t reach = pick({5, 320, 320, 8000});
    const Real unit = reach == 5 ? 1 : 8;
    for (size_t i = 0; i < count; ++i) {
      data[i] = wild && chance(50) ? static_cast<Real>(std::clamp<double>(hostileReal(), -FLT_MAX, FLT_MAX))
                                   : static_cast<Real>(between(-reach, reach)) / unit;
    }
  }

  // --- Arguments as they are ---
  bool has(const char* name) const { return find(name) >= 0; }
  bool isSpoiled(const char* name) const;
  // One way of several to spoil it: so often, and the same however else the call is spoiled.
  bool isSpoiled(const char* name, int32_t percent);
  template <class T>
  void set(const char* name, const T& value) {
    const auto i = static_cast<size_t>(index(name));
    values[i].set(value);
    isSet_[i] = true;
  }
  template <class T>
  T get(const char* name) const {
    return values[static_cast<size_t>(index(name))].get<T>();
  }
  int64_t integer(const char* name) const;
  // A number, or the side of a size as in "size.width"; drawn now unless it has been.
  double value(std::string_view name);
  // Draws it now, as its name, type and contract say.
  void draw(const char* name) { completeArgument(static_cast<size_t>(index(name))); }
  // How many elements an array argument has.
  int64_t countOf(const char* name);

  // --- What the driver must know ---
  // A failure with this status may leave outputs written, but for firm ones.
  void mayWriteOn(int64_t status) { partial.push_back(static_cast<uint64_t>(status)); }
  bool worksBeforeFailing = false;  // a failure may leave work buffers written
  // After each call that returned: tell what its result is worth comparing by, and release what it made.
  std::function<uint64_t(uint64_t result)> settle;
  bool once = false;      // the call cannot be repeated
  std::string forbidden;  // an argument outside the limits that its contract states
  bool vague = false;     // it stands for another one, which would need more memory than there is
  std::string complaint;

  // Gives every argument that the row has not mentioned the meaning of its name and type, and spoils fields.
  void complete();
  std::string description() const;
  // The names of the field that a spoil is about, from the outermost record on.
  std::vector<std::string> path(const Spoil& spoil);
  bool isRound() const { return planned_.has_value(); }  // about the order of checks
  const std::vector<Spoil>& plannedSpoils() const { return *planned_; }
  // How many fields of an argument's record a spoil can be about.
  static size_t fieldsToSpoil(const Function& function, size_t argument);

  const Function& function;
  std::vector<Value> values;
  std::deque<Block> blocks;  // whose addresses stay
  std::vector<uint64_t> partial;
  MockPool mock;
  bool spoiledAny = false;

 private:
  // While it lives, chance is that of one argument: the same whatever else is drawn. With `spoils` that of what is wrong.
  class Own {
   public:
    Own(Call& call, std::string_view name, uint64_t spoils = 0);
    ~Own() { call_.random = outer_; }
    Own(const Own&) = delete;
    Own& operator=(const Own&) = delete;

   private:
    Call& call_;
    Random outer_;
  };
  int find(std::string_view name) const;
  int index(const char* name) const;
  const Type& type(const char* name) const { return function.arguments[static_cast<size_t>(index(name))].type; }
  bool drawn(const char* name) const { return isSet_[static_cast<size_t>(index(name))]; }
  void setInteger(const char* name, int64_t value);
  int32_t step(const char* name, int64_t row);
  void* place(const char* name, int64_t bytes, size_t alignment, Role role);
  void completeArgument(size_t i);
  Limits limits(size_t i) { return said(i).limits ? said(i).limits(*this) : Limits{}; }
  const Said& said(size_t i) const { return function.arguments[i].said; }
  void completeInteger(size_t i);
  void completeReal(size_t i);
  void completeSize(size_t i);
  void completePointer(size_t i);
  void completeImage(size_t i);
  void completePlanes(size_t i, const char* step, DaxiSize planeSize);
  const char* sizeOf(size_t image) const;
  DaxStatus ask(const char* query, uint64_t* bytes);
  struct Leaf {
    uint8_t* data;
    Type type;
    Limits limits;
  };
  void fill(const Record& known, uint8_t* data, Limits outer, std::vector<Leaf>& leaves);
  void fillField(const Field& field, uint8_t* data, Limits outer);
  void spoil(const Leaf& leaf);
  void spoilField(const Spoil& spoil);
  void spoilFields(std::string_view name);

  Arena& arena_;
  uint64_t seed_;
  std::optional<std::vector<Spoil>> planned_;
  std::vector<bool> isSet_, spoiled_, atLimit_;
  std::vector<uint32_t> waysDrawn_;
  std::string_view notRead_;
};

// How a function's arguments are made, where names, types and the contract do not say it all. A pattern ends in * for all
// functions that begin so; the longest that fits counts.
struct Row {
  enum Flag : unsigned {
    plain = 0,
    neverFails = 1,  // its result is no status, or always 0
    neverSucceeds = 2,
    varies = 4,  // another result every time
  };
  const char* pattern;
  void (*plan)(Call& call);
  unsigned flags = plain;
};

// The rows of a family, which makes itself known: const Rows rows = {{...}, ...}, in a file of its own.
class Rows {
 public:
  Rows(std::initializer_list<Row> rows);
};

bool hasWord(std::string_view text, std::string_view word);

// The row of a function; one without a plan where it needs none.
const Row& findRow(std::string_view function);
// Patterns that no function fits.
std::vector<const char*> idleRows();

}  // namespace dax::hostile
