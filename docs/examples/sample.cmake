# Fails when the README shows another program than the one that is built and run.
file(READ ${README} readme)
file(READ ${SAMPLE} sample)
string(FIND "${readme}" "${sample}" position)
if(position EQUAL -1)
    message(FATAL_ERROR "README.md does not show docs/examples/sample.cpp as it is")
endif()
