// The large stack: an anonymous mapping with a context switch into it.
#include "xslt/private/LargeStack.h"

#include <sys/mman.h>
#include <ucontext.h>

#include <exception>

namespace XsltPrivate {

namespace {

const size_t kStackSize = size_t(1) << 30;

struct SWork {
    const std::function<void()>* pWork;
    std::exception_ptr failure;
    ucontext_t caller;
};

SWork* s_pCurrent = nullptr;

void Trampoline() {
    SWork* work = s_pCurrent;
    try {
        (*work->pWork)();
    } catch (...) {
        work->failure = std::current_exception();
    }
}

}  // namespace

void RunOnLargeStack(const std::function<void()>& work) {
    void* stack = mmap(nullptr, kStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (stack == MAP_FAILED) return work();
    SWork state{&work, nullptr, {}};
    ucontext_t callee;
    getcontext(&callee);
    callee.uc_stack.ss_sp = stack;
    callee.uc_stack.ss_size = kStackSize;
    callee.uc_link = &state.caller;
    makecontext(&callee, Trampoline, 0);
    SWork* previous = s_pCurrent;
    s_pCurrent = &state;
    swapcontext(&state.caller, &callee);
    s_pCurrent = previous;
    munmap(stack, kStackSize);
    if (state.failure) std::rethrow_exception(state.failure);
}

}  // namespace XsltPrivate
