# Inputs and outputs, and the deadline: outputs are on only while the bridge beats.
#
# For the cell's wiring there are the signals out-00 to out-44 and in-00 to in-44 (bits), aout-0 to aout-9 (floats) and the
# pin rio.ai-0 (s32):
#
#   out-, in-  00 to 15: LUMO_DO, LUMO_DI      16 to 31: DO1 to DO16, DI1 to DI16   32 to 39: FIXTURE_DO, FIXTURE_DI
#              40: PLC_REQUEST, PLC_READY      41 to 44: TABLE_DO, TABLE_DI
#   aout-      0 to 7: LUMO_AO_0 to LUMO_AO_7  8, 9: PART_COUNT                     rio.ai-0: PART_NUMBER
set bits 45
set words 10
loadusr -Wn rio ./rio.py

# No beat for 80 ms, or not armed: everything off, and the arm holds. Beats come each 10 ms; less than 60 ms would bite
# without a cause on a machine that has other work.
loadrt watchdog num_inputs=1
setp watchdog.timeout-0 0.08
addf watchdog.set-timeouts servo-thread
addf watchdog.process servo-thread
net beat rio.beat => watchdog.input-0
net arm rio.arm => watchdog.enable-in
# The watchdog's ok-out keeps its value when enable-in falls, so both are asked.
loadrt and2 count=[expr {$bits + 1}]
addf and2.$bits servo-thread
net alive watchdog.ok-out => and2.$bits.in0
net arm => and2.$bits.in1
net live and2.$bits.out => rio.ok

# motion.py holds the arm, too, while it stops it.
loadrt not count=1
loadrt or2 count=2
addf not.0 servo-thread
addf or2.0 servo-thread
net live => not.0.in
net dead not.0.out => or2.0.in0
net stopping => or2.0.in1
net hold or2.0.out => motion.feed-hold

# The beat as the servo thread has seen it: rio.py does not answer beats for one that has ended.
addf or2.1 servo-thread
net beat => or2.1.in0
net echo or2.1.out => rio.echo

for {set bit 0} {$bit < $bits} {incr bit} {
    set two [format %02d $bit]
    addf and2.$bit servo-thread
    net ordered-$two rio.do-$two => and2.$bit.in0
    net live => and2.$bit.in1
    net out-$two and2.$bit.out
    # Without wiring of its own, an input is what the bridge says of a simulated cell.
    net in-$two rio.sim-$two => rio.di-$two
}
loadrt conv_s32_float count=$words
loadrt mux2 count=$words
for {set register 0} {$register < $words} {incr register} {
    addf conv-s32-float.$register servo-thread
    addf mux2.$register servo-thread
    net ordered-a$register rio.ao-$register => conv-s32-float.$register.in
    net value-a$register conv-s32-float.$register.out => mux2.$register.in1
    net live => mux2.$register.sel
    net aout-$register mux2.$register.out
}
