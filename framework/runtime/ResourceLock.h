#pragma once

#include <pthread.h>

/// One error-checking mutex. A thread that locks it twice gets an error back at once, which is
/// ignored: the nested lock does nothing, and its unlock ends the outer hold. So nothing nests it.
class CResourceLock {
public:
    CResourceLock();
    CResourceLock(const CResourceLock&) = delete;
    CResourceLock& operator=(const CResourceLock&) = delete;

    void Lock();
    void Unlock();
    /// Destroys the mutex. Explicit, because an object still needs its lock while it is torn down.
    void Delete();

private:
    pthread_mutex_t m_Mutex;
};
