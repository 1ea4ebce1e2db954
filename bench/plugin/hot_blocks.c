/* Plugin of qemu's user-mode emulators: counts how often each translated block of a program runs and prints, at its end,
 * the blocks that take at least one in 200 of all instructions, each with its instructions. One guest thread only: the
 * additions are not atomic.
 *
 * Not every distribution ships the header of the plugin interface; what is used of its version 1 is declared here. */
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>

#define EXPORT __attribute__((visibility("default")))

typedef uint64_t qemu_plugin_id_t;
typedef struct qemu_info_t qemu_info_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*translated)(qemu_plugin_id_t id, struct qemu_plugin_tb* block));
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op op, void* counter,
                                              uint64_t operand);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
uint64_t qemu_plugin_tb_vaddr(const struct qemu_plugin_tb* block);
struct qemu_plugin_insn* qemu_plugin_tb_get_insn(const struct qemu_plugin_tb* block, size_t index);
char* qemu_plugin_insn_disas(const struct qemu_plugin_insn* instruction);
const char* qemu_plugin_insn_symbol(const struct qemu_plugin_insn* instruction);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*exited)(qemu_plugin_id_t id, void* data), void* data);

EXPORT int qemu_plugin_version = 1;

struct Block {
  struct Block* next;
  uint64_t runs, address;
  size_t size;
  const char* symbol;
  char* instructions[];
};

static struct Block* blocks;

static void countBlock(qemu_plugin_id_t id, struct qemu_plugin_tb* translated) {
  (void)id;
  const size_t size = qemu_plugin_tb_n_insns(translated);
  struct Block* const block = malloc(sizeof(*block) + size * sizeof(char*));
  if (!block) return;
  const char* const symbol = qemu_plugin_insn_symbol(qemu_plugin_tb_get_insn(translated, 0));
  *block = (struct Block){blocks, 0, qemu_plugin_tb_vaddr(translated), size, symbol ? symbol : "?"};
  for (size_t i = 0; i < size; ++i) {
    block->instructions[i] = qemu_plugin_insn_disas(qemu_plugin_tb_get_insn(translated, i));
  }
  blocks = block;
  qemu_plugin_register_vcpu_tb_exec_inline(translated, QEMU_PLUGIN_INLINE_ADD_U64, &block->runs, 1);
}

static void printHot(qemu_plugin_id_t id, void* data) {
  (void)id;
  (void)data;
  uint64_t total = 0;
  for (const struct Block* block = blocks; block; block = block->next) total += block->runs * block->size;
  fprintf(stderr, "instructions %" PRIu64 "\n", total);
  for (const struct Block* block = blocks; block; block = block->next) {
    if (block->runs * block->size < total / 200) continue;
    fprintf(stderr, "block %" PRIx64 " %" PRIu64 " %zu %s\n", block->address, block->runs, block->size, block->symbol);
    for (size_t i = 0; i < block->size; ++i) fprintf(stderr, "  %s\n", block->instructions[i]);
  }
}

EXPORT int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t* info, int argc, char** argv) {
  (void)info;
  (void)argc;
  (void)argv;
  qemu_plugin_register_vcpu_tb_trans_cb(id, countBlock);
  qemu_plugin_register_atexit_cb(id, printHot, NULL);
  return 0;
}
