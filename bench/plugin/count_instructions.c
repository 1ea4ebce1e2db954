/* Plugin of qemu's user-mode emulators: counts the guest instructions that a program executes and prints the total at
 * its end. Blocks are counted as they are entered, by an addition inside the translated code, so that a counted run is
 * hardly slower than a plain one. One guest thread only: the additions are not atomic.
 *
 * Not every distribution ships the header of the plugin interface; what is used of its version 1 is declared here. */
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>

#define EXPORT __attribute__((visibility("default")))

typedef uint64_t qemu_plugin_id_t;
typedef struct qemu_info_t qemu_info_t;
struct qemu_plugin_tb;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*translated)(qemu_plugin_id_t id, struct qemu_plugin_tb* block));
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op op, void* counter,
                                              uint64_t operand);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*exited)(qemu_plugin_id_t id, void* data), void* data);

EXPORT int qemu_plugin_version = 1;

static uint64_t instructions;

static void countBlock(qemu_plugin_id_t id, struct qemu_plugin_tb* block) {
  (void)id;
  qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &instructions,
                                           qemu_plugin_tb_n_insns(block));
}

static void printTotal(qemu_plugin_id_t id, void* data) {
  (void)id;
  (void)data;
  fprintf(stderr, "instructions %" PRIu64 "\n", instructions);
}

EXPORT int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t* info, int argc, char** argv) {
  (void)info;
  (void)argc;
  (void)argv;
  qemu_plugin_register_vcpu_tb_trans_cb(id, countBlock);
  qemu_plugin_register_atexit_cb(id, printTotal, NULL);
  return 0;
}
