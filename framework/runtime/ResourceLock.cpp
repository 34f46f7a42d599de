#include "framework/runtime/ResourceLock.h"

static_assert(PTHREAD_MUTEX_ERRORCHECK == 2);

CResourceLock::CResourceLock() {
    pthread_mutexattr_t attribute;
    pthread_mutexattr_init(&attribute);
    pthread_mutexattr_settype(&attribute, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutex_init(&m_Mutex, &attribute);
    pthread_mutexattr_destroy(&attribute);
}

void CResourceLock::Lock() {
    pthread_mutex_lock(&m_Mutex);
}

void CResourceLock::Unlock() {
    pthread_mutex_unlock(&m_Mutex);
}

void CResourceLock::Delete() {
    pthread_mutex_destroy(&m_Mutex);
}
