#include "kinematics/arm.h"

#include <kdl/chain.hpp>
#include <kdl/chainfksolverpos_recursive.hpp>
#include <kdl/chainiksolverpos_lma.hpp>
#include <kdl/chainiksolvervel_pinv.hpp>

#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace kin {

namespace {

constexpr double pi = 3.14159265358979323846;
// Sum of metres and radians: the error before the refining steps, and at singular poses.
constexpr double tolerance = 2e-6;
constexpr double roundingError = 1e-11;
constexpr int refiningSteps = 3;
constexpr double torchM = 0.15;
constexpr int maxIterations = 100;
// A solution within this distance of the seed (radians, over all joints) is the nearest one: the arm's
// other configurations are farther away.
constexpr double nearAngle = 0.2;

constexpr double rad(double degrees) {
    return degrees * pi / 180.0;
}

struct Axis {
    double offset, d, a, alpha;  // degrees, metres, metres, degrees
    double low, high;            // degrees
};

constexpr Axis sixAxes[] = {
    {0, 0.45, 0.08, -90, -170, 170}, {-90, 0, 0.62, 0, -100, 135}, {0, 0, 0, -90, -210, 75},
    {0, 0.70, 0, 90, -190, 190},     {0, 0, 0, -90, -130, 130},    {0, 0.25, 0, 0, -360, 360},
};

constexpr Axis sevenAxes[] = {
    {0, 0.45, 0.08, -90, -170, 170}, {0, 0, 0, 90, -100, 135},     {0, 0.62, 0, -90, -170, 170},
    {0, 0, 0, 90, -165, 165},        {0, 0.70, 0, -90, -190, 190}, {0, 0, 0, 90, -130, 130},
    {180, 0.25, 0, 0, -360, 360},
};

// Where the search for the joints at home starts.
const Joints sixHomeSeed = {0, rad(-14), rad(49), 0, rad(55), 0};
const Joints sevenHomeSeed = {0, rad(-14), 0, rad(139), 0, rad(55), 0};

/// Shoulder, elbow (0 is the straight arm) and wrist of further starting points, for a search that
/// fails or ends far from the seed: elbow up from folded to stretched, then elbow down.
constexpr double startPostures[][3] = {
    {rad(-14), rad(139), rad(55)}, {rad(30), rad(90), rad(60)},   {rad(60), rad(40), rad(80)},
    {rad(60), rad(40), rad(10)},   {rad(100), rad(-90), rad(90)}, {rad(110), rad(-60), rad(-30)},
};

double squaredDistance(const Joints& a, const Joints& b) {
    double sum = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return sum;
}

// KDL::Vector::Norm() returns 0 below a micrometre.
double length(const KDL::Vector& vector) {
    return std::sqrt(dot(vector, vector));
}

double size(const KDL::Twist& twist) {
    return length(twist.vel) + length(twist.rot);
}

KDL::JntArray toArray(const Joints& joints, unsigned size) {
    KDL::JntArray array(size);
    for (unsigned i = 0; i < size; ++i) {
        array(i) = i < joints.size() ? joints[i] : 0.0;
    }
    return array;
}

}  // namespace

KDL::Frame toFrame(const Pose& pose) {
    return {KDL::Rotation::RPY(pose.rot[0], pose.rot[1], pose.rot[2]),
            KDL::Vector(pose.trans[0], pose.trans[1], pose.trans[2])};
}

Pose toPose(const KDL::Frame& frame) {
    Pose pose;
    pose.trans = {frame.p.x(), frame.p.y(), frame.p.z()};
    frame.M.GetRPY(pose.rot[0], pose.rot[1], pose.rot[2]);
    for (double& angle : pose.rot) {
        if (angle < 1e-9 - pi) {
            angle += 2 * pi;
        }
    }
    return pose;
}

/// What was asked of the inverse, and its answer. A cell that repeats its programs asks the same again and
/// again, and the search takes a third of a run.
class KnownSolutions {
public:
    struct Answer {
        std::optional<Joints> joints;
        Arm::Fault fault = Arm::Fault::None;
    };
    static constexpr std::size_t mostAxes = 7;
    using Question = std::array<double, 6 + mostAxes>;

    static Question question(const Pose& pose, const Joints& seed) {
        Question asked{};
        std::copy(pose.trans.begin(), pose.trans.end(), asked.begin());
        std::copy(pose.rot.begin(), pose.rot.end(), asked.begin() + 3);
        std::copy_n(seed.begin(), std::min(seed.size(), mostAxes), asked.begin() + 6);
        return asked;
    }

    const Answer* find(const Question& asked) const {
        const auto found = answers_.find(asked);
        return found == answers_.end() ? nullptr : &found->second;
    }
    void keep(const Question& asked, const Answer& answer) {
        constexpr std::size_t most = 20000;  // about 5 MB
        if (answers_.size() >= most) {
            answers_.clear();
        }
        answers_.emplace(asked, answer);
    }

private:
    struct Hash {
        std::size_t operator()(const Question& asked) const {
            return qHashBits(asked.data(), sizeof(double) * asked.size());
        }
    };
    std::unordered_map<Question, Answer, Hash> answers_;
};

struct Arm::Private {
    explicit Private(int count);
    KnownSolutions::Answer search(const Pose& pose, const Joints& from) const;
    KDL::Frame forward(const Joints& joints) const;
    bool within(const Joints& joints) const;
    bool solve(const KDL::Frame& goal, const Joints& start, Joints* found) const;
    KDL::Twist poseError(const KDL::JntArray& joints, const KDL::Frame& goal) const;
    void unwrapNear(const Joints& seed, Joints* joints) const;
    Joints startPosture(const double (&shape)[3], double azimuth, bool flipped) const;

    int axes;
    const Axis* table;
    KDL::Chain chain;
    std::unique_ptr<KDL::ChainFkSolverPos_recursive> fk;
    std::unique_ptr<KDL::ChainIkSolverPos_LMA> ik;
    std::unique_ptr<KDL::ChainIkSolverVel_pinv> velocity;
    Joints home;
    KnownSolutions known;
};

Arm::Private::Private(int count) : axes(count == 7 ? 7 : 6), table(count == 7 ? sevenAxes : sixAxes) {
    for (int i = 0; i < axes; ++i) {
        const Axis& axis = table[i];
        chain.addSegment(KDL::Segment(KDL::Joint(KDL::Joint::RotZ),
                                      KDL::Frame::DH(axis.a, rad(axis.alpha), axis.d, rad(axis.offset))));
    }
    fk = std::make_unique<KDL::ChainFkSolverPos_recursive>(chain);
    Eigen::Matrix<double, 6, 1> weights;
    weights.setOnes();
    ik = std::make_unique<KDL::ChainIkSolverPos_LMA>(chain, weights, tolerance / 4, maxIterations);
    velocity = std::make_unique<KDL::ChainIkSolverVel_pinv>(chain);

    const KDL::Frame pose(KDL::Rotation::RPY(pi, 0, 0), KDL::Vector(0.5, 0, 0.4));
    solve(pose, axes == 7 ? sevenHomeSeed : sixHomeSeed, &home);
}

KDL::Frame Arm::Private::forward(const Joints& joints) const {
    KDL::Frame frame;
    fk->JntToCart(toArray(joints, unsigned(axes)), frame);
    return frame;
}

bool Arm::Private::within(const Joints& joints) const {
    for (int i = 0; i < axes; ++i) {
        const double angle = joints[size_t(i)];
        if (!(angle >= rad(table[i].low) - 1e-9 && angle <= rad(table[i].high) + 1e-9)) {
            return false;
        }
    }
    return true;
}

/// One search. The solver's return value is ignored, because it reports a failure too when its steps
/// become too small at the goal; the error of the result decides. The solver ignores turns below a
/// microradian, so a few steps of our own refine its result.
bool Arm::Private::solve(const KDL::Frame& goal, const Joints& start, Joints* found) const {
    const KDL::JntArray from = toArray(start, unsigned(axes));
    KDL::JntArray joints = from;
    ik->CartToJnt(from, goal, joints);
    KDL::Twist error = poseError(joints, goal);
    KDL::JntArray step = from;
    for (int i = 0; i < refiningSteps && size(error) > roundingError && size(error) < tolerance; ++i) {
        velocity->CartToJnt(joints, error, step);
        joints.data += step.data;
        error = poseError(joints, goal);
    }
    if (!(size(error) < tolerance)) {
        return false;
    }
    found->assign(joints.data.data(), joints.data.data() + axes);
    return true;
}

/// The step and turn that are left from the pose of `joints` to the goal.
KDL::Twist Arm::Private::poseError(const KDL::JntArray& joints, const KDL::Frame& goal) const {
    KDL::Frame reached;
    fk->JntToCart(joints, reached);
    const KDL::Vector turn = (reached.M.UnitX() * goal.M.UnitX() + reached.M.UnitY() * goal.M.UnitY() +
                              reached.M.UnitZ() * goal.M.UnitZ()) /
                             2;
    // The cross products are zero for half a turn, too.
    const bool opposite = dot(reached.M.UnitX(), goal.M.UnitX()) + dot(reached.M.UnitY(), goal.M.UnitY()) +
                              dot(reached.M.UnitZ(), goal.M.UnitZ()) <
                          0;
    return {goal.p - reached.p, opposite ? KDL::Vector(pi, 0, 0) : turn};
}

/// Adds whole turns to each joint so that it is as near to the seed as its limits allow.
void Arm::Private::unwrapNear(const Joints& seed, Joints* joints) const {
    for (size_t i = 0; i < size_t(axes); ++i) {
        const double low = rad(table[i].low), high = rad(table[i].high);
        double angle = (*joints)[i] + 2 * pi * std::round((seed[i] - (*joints)[i]) / (2 * pi));
        if (angle > high) {
            angle -= 2 * pi * std::ceil((angle - high) / (2 * pi));
        } else if (angle < low) {
            angle += 2 * pi * std::ceil((low - angle) / (2 * pi));
        }
        if (angle >= low && angle <= high) {
            (*joints)[i] = angle;
        }
    }
}

Joints Arm::Private::startPosture(const double (&shape)[3], double azimuth, bool flipped) const {
    const double roll = flipped ? pi : 0.0;
    const double wrist = flipped ? -shape[2] : shape[2];
    if (axes == 7) {
        return {azimuth, shape[0], 0, shape[1], roll, wrist, roll};
    }
    return {azimuth, shape[0], shape[1] - pi / 2, roll, wrist, roll};
}

Arm::Arm(int axes) : d_(std::make_unique<Private>(axes)) {}
Arm::~Arm() = default;

int Arm::axes() const {
    return d_->axes;
}

const Joints& Arm::home() const {
    return d_->home;
}

Pose Arm::forward(const Joints& joints) const {
    return toPose(d_->forward(joints));
}

std::vector<std::array<double, 3>> Arm::skeleton(const Joints& joints) const {
    const KDL::JntArray array = toArray(joints, unsigned(d_->axes));
    std::vector<std::array<double, 3>> places;
    const auto add = [&places](const KDL::Vector& place) {
        places.push_back({place.x(), place.y(), place.z()});
    };
    add({0, 0, 0});
    add({0, 0, d_->table[0].d});
    // Behind the segments of shoulder, elbow and wrist; a roll of the upper arm moves none of them.
    for (const int segments : {1, d_->axes - 4, d_->axes - 2}) {
        KDL::Frame frame;
        d_->fk->JntToCart(array, frame, segments);
        add(frame.p);
    }
    const KDL::Frame tool = d_->forward(joints);
    add(tool * KDL::Vector(0, 0, -torchM));
    add(tool.p);
    return places;
}

std::optional<Joints> Arm::inverse(const Pose& pose, const Joints& seed, Fault* fault) const {
    const Joints& from = int(seed.size()) == d_->axes ? seed : d_->home;
    const KnownSolutions::Question asked = KnownSolutions::question(pose, from);
    const KnownSolutions::Answer* known = d_->known.find(asked);
    const KnownSolutions::Answer answer = known ? *known : d_->search(pose, from);
    if (!known) {
        d_->known.keep(asked, answer);
    }
    if (fault) {
        *fault = answer.fault;
    }
    return answer.joints;
}

KnownSolutions::Answer Arm::Private::search(const Pose& pose, const Joints& from) const {
    const KDL::Frame goal = toFrame(pose);
    bool reached = false;
    std::optional<Joints> best;
    double bestDistance = std::numeric_limits<double>::max();
    const auto searchFrom = [&](const Joints& start) {
        Joints found;
        if (!solve(goal, start, &found)) {
            return;
        }
        reached = true;
        unwrapNear(from, &found);
        const double distance = squaredDistance(found, from);
        if (within(found) && distance < bestDistance) {
            best = found;
            bestDistance = distance;
        }
    };

    searchFrom(from);
    if (bestDistance > nearAngle * nearAngle) {
        const double azimuth = std::atan2(pose.trans[1], pose.trans[0]);
        for (const auto& shape : startPostures) {
            for (const double side : {0.0, azimuth > 0 ? -pi : pi}) {
                searchFrom(startPosture(shape, azimuth + side, false));
                searchFrom(startPosture(shape, azimuth + side, true));
            }
        }
    }
    const Fault fault = best ? Fault::None : reached ? Fault::JointLimit : Fault::OutOfReach;
    return {best, fault};
}

bool Arm::withinLimits(const Joints& joints) const {
    return int(joints.size()) == d_->axes && d_->within(joints);
}

}  // namespace kin
