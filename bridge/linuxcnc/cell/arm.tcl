# The arm: kinematics, drives that are not there, and the limits of its joints.
loadrt $::KINS(KINEMATICS)
loadrt $::EMCMOT(EMCMOT) servo_period_nsec=$::EMCMOT(SERVO_PERIOD) num_joints=$::KINS(JOINTS) num_dio=16 num_aio=16
addf motion-command-handler servo-thread
addf motion-controller servo-thread

# Denavit-Hartenberg after Craig: row i has A and ALPHA of the axis before. Joint 6 is turned over, so that a torch that
# points down is A = B = C = 0. mm and radians.
set pi 3.14159265358979323846
set half [expr {$pi / 2}]
foreach {row a alpha d} [list 0 0 0 450  1 80 -$half 0  2 620 0 0  3 0 -$half 700  4 0 $half 0  5 0 $half -250] {
    setp genserkins.A-$row $a
    setp genserkins.ALPHA-$row $alpha
    setp genserkins.D-$row $d
}
# M68 E3 Q1 in a batch: X Y Z A B C are the six joints.
net joint-motion motion.analog-out-03 => motion.switchkins-type

# A window for each joint, degrees: outside of it the motion is switched off within a cycle.
loadrt wcomp count=6
loadrt logic personality=0x106
foreach {joint low high} {0 -170.01 170.01  1 -190.01 45.01  2 -210.01 75.01
                          3 -190.01 190.01  4 -130.01 130.01  5 -360.01 360.01} {
    # The drive: the command comes back as feedback.
    net drive-$joint joint.$joint.motor-pos-cmd => joint.$joint.motor-pos-fb
    addf wcomp.$joint servo-thread
    setp wcomp.$joint.min $low
    setp wcomp.$joint.max $high
    net angle-$joint joint.$joint.pos-cmd => wcomp.$joint.in
    net within-$joint wcomp.$joint.out => logic.0.in-0$joint
}
addf logic.0 servo-thread
net within-limits logic.0.and => motion.enable

net estop iocontrol.0.user-enable-out => iocontrol.0.emc-enable-in
net tool-prepare iocontrol.0.tool-prepare => iocontrol.0.tool-prepared
net tool-change iocontrol.0.tool-change => iocontrol.0.tool-changed
