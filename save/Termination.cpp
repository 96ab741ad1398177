// SPDX-License-Identifier: Apache-2.0
#include "save/Termination.h"

#include <pthread.h>

void HoldTermination()
{
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
}

void TerminationPoint()
{
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
    pthread_testcancel();
    HoldTermination();
}
