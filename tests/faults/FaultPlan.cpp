// What makes a launcher of the host fail on order (Orders.h): linked to one beside its main file,
// this hands the orders to the stand-in before the run begins.
#include <fcntl.h>

#include "Orders.h"
#include "platform/hosted/Faults.h"

namespace {

struct Plan {
    Plan() {
        const corvane::Orders orders = corvane::takeOrders();
        if (!orders.operation.empty())
            (orders.lasting ? corvane::hosted::failOperationFrom : corvane::hosted::failOperation)(
                orders.operation.c_str(), orders.code, orders.call);
        if (!orders.record.empty())
            corvane::hosted::recordOperations(
                open(orders.record.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    }
};

const Plan plan;

}  // namespace
