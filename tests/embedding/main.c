/* A client of the embedded library. The test configures this project (the
 * library alone must need no test framework); it does not build it. */
#include <brindle/ole.h>
#include <brindle/exports.h>

int main(void) {
    BSTR text = SysAllocStringByteLen("abc", 3);
    BSTR reversed = cReverse(&text);
    int ok = SysStringByteLen(reversed) == 3;
    SysFreeString(reversed);
    SysFreeString(text);
    return ok ? 0 : 1;
}
