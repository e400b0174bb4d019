// Locks, as the word that each of them is: the address of the lock itself while somebody holds it.
#include <atomic>

#include "platform/hosted/ProcessOperations.h"

void AcquireSRWLockExclusive(PSRWLOCK lock) {
    const std::atomic_ref word(lock->Ptr);
    for (LPVOID former = nullptr; !word.compare_exchange_strong(former, lock); former = nullptr) {
        word.wait(lock);
    }
}

void ReleaseSRWLockExclusive(PSRWLOCK lock) {
    const std::atomic_ref word(lock->Ptr);
    word.store(nullptr);
    word.notify_one();
}
