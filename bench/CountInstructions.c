// A plug-in of the emulator: prints the number of instructions that the program ran. Debian has no
// header for it; this is the part of its version 1 that is used here.

#include <inttypes.h>
#include <stdint.h>
#include <stdio.h>

struct qemu_plugin_tb;
struct qemu_info_t;
typedef uint64_t qemu_plugin_id_t;
enum { INLINE_ADD_U64 = 0 };

extern void qemu_plugin_register_vcpu_tb_trans_cb(
    qemu_plugin_id_t id, void (*translated)(qemu_plugin_id_t, struct qemu_plugin_tb*));
extern size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
extern void qemu_plugin_register_vcpu_tb_exec_inline(
    struct qemu_plugin_tb* block, int operation, void* counter, uint64_t amount);
extern void qemu_plugin_register_atexit_cb(
    qemu_plugin_id_t id, void (*ended)(qemu_plugin_id_t, void*), void* data);

#define EXPORT __attribute__((visibility("default")))

EXPORT int qemu_plugin_version = 1;

static uint64_t g_Instructions;

static void CountBlock(qemu_plugin_id_t id, struct qemu_plugin_tb* block) {
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(
        block, INLINE_ADD_U64, &g_Instructions, qemu_plugin_tb_n_insns(block));
}

static void Print(qemu_plugin_id_t id, void* data) {
    (void)id;
    (void)data;
    fprintf(stderr, "instructions: %" PRIu64 "\n", g_Instructions);
}

EXPORT int qemu_plugin_install(
    qemu_plugin_id_t id, const struct qemu_info_t* info, int count, char** arguments) {
    (void)info;
    (void)count;
    (void)arguments;
    qemu_plugin_register_vcpu_tb_trans_cb(id, CountBlock);
    qemu_plugin_register_atexit_cb(id, Print, NULL);
    return 0;
}
