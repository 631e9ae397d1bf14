#include "campaign/names.h"

#include "devices/ports.h"

namespace campaign {

namespace {

template <typename Value>
struct Entry {
    Value value;
    const char* name;
};

const Entry<Action::Kind> actions[] = {
    {Action::Kind::Start, "start"}, {Action::Kind::Resume, "resume"},     {Action::Kind::Once, "once"},
    {Action::Kind::Pause, "pause"}, {Action::Kind::Power, "power"},       {Action::Kind::Mode, "mode"},
    {Action::Kind::Weld, "weld"},   {Action::Kind::HandWeld, "handWeld"}, {Action::Kind::Input, "input"},
    {Action::Kind::Fail, "fail"},   {Action::Kind::Quirk, "quirk"},       {Action::Kind::Replace, "replace"},
    {Action::Kind::Edit, "edit"},   {Action::Kind::Result, "result"},     {Action::Kind::Param, "param"},
    {Action::Kind::Fault, "fault"}, {Action::Kind::Answer, "answer"},     {Action::Kind::Hand, "hand"},
    {Action::Kind::Reply, "reply"}, {Action::Kind::Port, "port"},         {Action::Kind::Panel, "panel"},
    {Action::Kind::Quit, "quit"}};

const Entry<Moment::Kind> moments[] = {{Moment::Kind::At, "at"},
                                       {Moment::Kind::After, "after"},
                                       {Moment::Kind::InWait, "inWait"},
                                       {Moment::Kind::Inside, "inside"}};

const Entry<Event::Kind> events[] = {
    {Event::Kind::Start, "start"},         {Event::Kind::Once, "once"},
    {Event::Kind::Pause, "pause"},         {Event::Kind::Power, "power"},
    {Event::Kind::Replace, "replace"},     {Event::Kind::Quit, "quit"},
    {Event::Kind::Quirk, "quirk"},         {Event::Kind::Act, "act"},
    {Event::Kind::Done, "done"},           {Event::Kind::Activity, "activity"},
    {Event::Kind::State, "state"},         {Event::Kind::Line, "line"},
    {Event::Kind::Statement, "statement"}, {Event::Kind::WeldFlag, "weldFlag"},
    {Event::Kind::Param, "param"},         {Event::Kind::Node, "node"},
    {Event::Kind::Write, "write"},         {Event::Kind::Foreign, "foreign"},
    {Event::Kind::Dropped, "dropped"},     {Event::Kind::Output, "output"},
    {Event::Kind::Command, "command"},     {Event::Kind::Result, "result"},
    {Event::Kind::Zone, "zone"},           {Event::Kind::Permission, "permission"},
    {Event::Kind::Robot, "robot"},         {Event::Kind::Emission, "emission"},
    {Event::Kind::Complaint, "complaint"}};

const Entry<Stage> stages[] = {{Stage::Bare, "bare"}, {Stage::Page, "page"}, {Stage::Stations, "stations"}};

template <typename Value, std::size_t Size>
QString nameIn(const Entry<Value> (&table)[Size], Value value) {
    for (const Entry<Value>& entry : table) {
        if (entry.value == value) {
            return QString::fromLatin1(entry.name);
        }
    }
    return QString();
}

template <typename Value, std::size_t Size>
bool findIn(const Entry<Value> (&table)[Size], const QString& name, Value* value) {
    for (const Entry<Value>& entry : table) {
        if (name == QLatin1String(entry.name)) {
            *value = entry.value;
            return true;
        }
    }
    return false;
}

}  // namespace

QString nameOf(Action::Kind kind) {
    return nameIn(actions, kind);
}

QString nameOf(Moment::Kind kind) {
    return nameIn(moments, kind);
}

QString nameOf(Event::Kind kind) {
    return nameIn(events, kind);
}

QString nameOf(Stage stage) {
    return nameIn(stages, stage);
}

bool fromName(const QString& name, Action::Kind* kind) {
    return findIn(actions, name, kind);
}

bool fromName(const QString& name, Moment::Kind* kind) {
    return findIn(moments, name, kind);
}

bool fromName(const QString& name, Event::Kind* kind) {
    return findIn(events, name, kind);
}

bool fromName(const QString& name, Stage* stage) {
    return findIn(stages, name, stage);
}

int portFromName(const QString& name) {
    for (int port = 0; port <= AO_LASER_DUTY_CYCLE; ++port) {
        if (nameOfPort(port) == name) {
            return port;
        }
    }
    return -1;
}

}  // namespace campaign
