// The large stack: an anonymous mapping with a context switch into it.
#include "xslt/private/LargeStack.h"

#include <sys/mman.h>
#include <ucontext.h>

#include <exception>

// AddressSanitizer does not follow context switches (it warns on the first and misreads stacks
// when an exception unwinds on the large one). Under it the large stack belongs to a thread of
// its own, started and joined at once, so that still only one thread runs at a time.
#if defined(__SANITIZE_ADDRESS__)
#define KST_LARGE_STACK_THREAD 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KST_LARGE_STACK_THREAD 1
#endif
#endif
#ifdef KST_LARGE_STACK_THREAD
#include <pthread.h>
#endif

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

#ifdef KST_LARGE_STACK_THREAD
void* ThreadMain(void* argument) {
    s_pCurrent = static_cast<SWork*>(argument);
    Trampoline();
    return nullptr;
}
#endif

}  // namespace

#ifdef KST_LARGE_STACK_THREAD
void RunOnLargeStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    SWork state{&work, nullptr, {}};
    SWork* previous = s_pCurrent;
    pthread_t thread;
    bool started = pthread_create(&thread, &attributes, ThreadMain, &state) == 0;
    pthread_attr_destroy(&attributes);
    if (!started) return work();
    pthread_join(thread, nullptr);
    s_pCurrent = previous;
    if (state.failure) std::rethrow_exception(state.failure);
}
#else
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
#endif

}  // namespace XsltPrivate
