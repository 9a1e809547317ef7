// The smallest application: it links the installed package and uses both libraries.
#include <Zel260/Widgets.h>

#include <cstdio>

int main()
{
    CString text("consumer");
    text += " ok";
    std::puts(text);
    return text == "consumer ok" ? 0 : 1;
}
