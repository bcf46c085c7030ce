// LqDateTime::printk: the value on the debugger channel of the log functions.
#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/files/LqLog.h"

void LqDateTime::printk() const {
  ::printk(u"%02d/%02d/%04d %02d:%02d:%02d.%03d\n", Day(), Month(), Year(), Hour(), Minute(),
           Second(), MSecond());
}
